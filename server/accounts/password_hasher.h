#pragma once

#include <semaphore>
#include <string>

namespace velmora::server {

/// Argon2id through libsodium. Each call costs 64 MiB and a tenth of a second on purpose; so only two run at
/// a time, and others wait.
class PasswordHasher {
public:
    [[nodiscard]] std::string hash(const std::string& password);
    [[nodiscard]] bool verify(const std::string& hash, const std::string& password);

    /// Takes the time of a verification, so that an unknown address can't be told from a wrong password.
    void verifyNothing(const std::string& password);

private:
    std::counting_semaphore<2> m_slots{2};
};

} // namespace velmora::server
