#include "accounts/signing_key.h"

#include <fcntl.h>
#include <sodium.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <system_error>

namespace velmora::server {

namespace {

std::runtime_error failure(const std::filesystem::path& file) {
    return std::runtime_error("cannot use key file " + file.string() + ": " +
                              (errno ? std::generic_category().message(errno) : "not a key"));
}

/// Complete under another name first, so that a start cut short leaves no half of a key.
void make(const std::filesystem::path& file) {
    HmacKey key{};
    randombytes_buf(key.data(), key.size());
    const auto draft = file.string() + ".new";
    const int descriptor = ::open(draft.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        throw failure(file);
    }
    const bool written = ::write(descriptor, key.data(), key.size()) == static_cast<ssize_t>(key.size()) &&
                         ::fsync(descriptor) == 0;
    ::close(descriptor);
    if (!written || ::rename(draft.c_str(), file.c_str()) != 0) {
        throw failure(file);
    }
}

} // namespace

SigningKey::SigningKey(const std::filesystem::path& file) {
    if (!std::filesystem::exists(file)) {
        make(file);
    }
    errno = 0;
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw failure(file);
    }
    const auto count = ::read(descriptor, m_master.data(), m_master.size());
    ::close(descriptor);
    if (count != static_cast<ssize_t>(m_master.size())) {
        throw failure(file);
    }
}

HmacKey SigningKey::derive(Purpose purpose) const {
    HmacKey key{};
    crypto_kdf_derive_from_key(key.data(), key.size(), static_cast<std::uint64_t>(purpose), "velmora_",
                               m_master.data());
    return key;
}

} // namespace velmora::server
