#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

namespace velmora::server {

/// A key for HMAC-SHA256.
using HmacKey = std::array<unsigned char, 32>;

/// The server's master key: made at the first start, kept in a file that only its owner reads.
class SigningKey {
public:
    /// Fails with std::runtime_error if the file can't be read or made, or is not a key.
    explicit SigningKey(const std::filesystem::path& file);

    /// An independent key for each purpose.
    enum class Purpose : std::uint64_t { AccessTokens = 1, FormTokens = 2, AccountForms = 3 };
    [[nodiscard]] HmacKey derive(Purpose purpose) const;

private:
    HmacKey m_master{};
};

} // namespace velmora::server
