#pragma once

#include <filesystem>
#include <span>

namespace velmora::server {

/// A file without a name: gone with this object, and with the process however that ends.
class TempFile {
public:
    /// `folder` must exist. Fails with std::system_error, as writing does.
    explicit TempFile(const std::filesystem::path& folder);
    ~TempFile();
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    void append(std::span<const char> bytes);

    /// Open for reading and writing.
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

} // namespace velmora::server
