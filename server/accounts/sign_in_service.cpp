#include "accounts/sign_in_service.h"

#include "accounts/account_store.h"
#include "accounts/password_hasher.h"

#include <Poco/RegularExpression.h>
#include <Poco/String.h>

#include <algorithm>

namespace velmora::server {

namespace {

constexpr std::size_t attemptsPerEmail = 10;
constexpr std::size_t attemptsPerPeer = 60;
constexpr std::chrono::minutes attemptWindow{15};
constexpr std::size_t shortestPassword = 8;
constexpr std::size_t longestPassword = 256;

std::string normalised(const std::string& email) {
    static const Poco::RegularExpression form(R"(^[^@\s"<>]{1,64}@[^@\s"<>]{1,190}$)");
    auto address = Poco::toLower(Poco::trim(email));
    if (!form.match(address)) {
        throw SignInFailure(400, "Проверьте адрес почты: он выглядит неправильно.");
    }
    return address;
}

/// Code points of UTF-8, for a person counts characters and not bytes.
std::size_t lengthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (byte & '\xC0') != '\x80'; }));
}

void checkLength(const std::string& password) {
    if (lengthOf(password) < shortestPassword) {
        throw SignInFailure(400, "Пароль слишком короткий: нужно не меньше 8 символов.");
    }
    if (password.size() > longestPassword) {
        throw SignInFailure(400, "Пароль слишком длинный.");
    }
}

} // namespace

SignInFailure SignInFailure::stalePage() {
    return {400, "Страница устарела. Попробуйте ещё раз."};
}

SignInService::SignInService(AccountStore& accounts, PasswordHasher& hasher, const Clock& clock)
    : m_accounts(accounts)
    , m_hasher(hasher)
    , m_attemptsByEmail(attemptsPerEmail, attemptWindow, clock)
    , m_attemptsByPeer(attemptsPerPeer, attemptWindow, clock) {}

Account SignInService::signIn(const std::string& email, const std::string& password,
                              const std::string& peer) {
    const auto address = normalised(email);
    takeAttempt(m_attemptsByPeer, peer);
    takeAttempt(m_attemptsByEmail, address);
    if (password.size() <= longestPassword) {
        const auto found = m_accounts.byEmail(address);
        if (found && !found->passwordHash.empty()) {
            if (m_hasher.verify(found->passwordHash, password)) {
                m_attemptsByEmail.reset(address);
                return found->account;
            }
        } else {
            m_hasher.verifyNothing(password);
        }
    }
    throw SignInFailure(401, "Неверная почта или пароль.");
}

Account SignInService::createAccount(const std::string& email, const std::string& password,
                                     const std::string& peer) {
    const auto address = normalised(email);
    checkLength(password);
    takeAttempt(m_attemptsByPeer, peer);
    const SignInFailure taken(409, "Аккаунт с такой почтой уже есть. Войдите или укажите другую почту.");
    if (address.ends_with("@localhost") || m_accounts.byEmail(address)) {
        throw taken;
    }
    auto account = m_accounts.create(address, m_hasher.hash(password), false);
    if (!account) {
        throw taken;
    }
    return *account;
}

void SignInService::changePassword(const Account& account, const std::string& current,
                                   const std::string& wanted, const std::string& peer) {
    checkLength(wanted);
    try {
        static_cast<void>(signIn(account.email, current, peer));
    } catch (const SignInFailure& failure) {
        throw failure.status() == 401 ? SignInFailure(401, "Текущий пароль введён неверно.") : failure;
    }
    m_accounts.setPasswordHash(account.id, m_hasher.hash(wanted));
}

Account SignInService::signInLocally(const LocalUser& user) {
    if (auto account = m_accounts.create(user.email, std::nullopt, true)) {
        return *account;
    }
    return m_accounts.byEmail(user.email).value().account;
}

void SignInService::takeAttempt(RateLimiter& limiter, const std::string& key) {
    if (const auto wait = limiter.take(key); wait > std::chrono::seconds::zero()) {
        const auto minutes = std::chrono::ceil<std::chrono::minutes>(wait).count();
        throw SignInFailure(429, "Слишком много попыток. Попробуйте снова через " + std::to_string(minutes) +
                                     " мин.");
    }
}

} // namespace velmora::server
