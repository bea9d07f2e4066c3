#include "accounts/password_hasher.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

namespace velmora::server {

namespace {

class Slot {
public:
    explicit Slot(std::counting_semaphore<2>& slots)
        : m_slots(slots) {
        m_slots.acquire();
    }
    ~Slot() { m_slots.release(); }
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;

private:
    std::counting_semaphore<2>& m_slots;
};

} // namespace

std::string PasswordHasher::hash(const std::string& password) {
    const Slot slot(m_slots);
    std::array<char, crypto_pwhash_STRBYTES> text{};
    if (crypto_pwhash_str(text.data(), password.data(), password.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
        throw std::runtime_error("not enough memory to hash a password");
    }
    return text.data();
}

bool PasswordHasher::verify(const std::string& hash, const std::string& password) {
    const Slot slot(m_slots);
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

void PasswordHasher::verifyNothing(const std::string& password) {
    static_cast<void>(hash(password));
}

} // namespace velmora::server
