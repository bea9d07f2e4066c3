#include "accounts/sign_in_service.h"

#include "accounts/account_store.h"
#include "accounts/password_hasher.h"

#include <Poco/RegularExpression.h>
#include <Poco/String.h>

#include <algorithm>

namespace velmora::server {

namespace {

constexpr int freeAttempts = 5;
/// For all accounts together: a household, or an office behind one address.
constexpr int freeAttemptsOfNetwork = 60;
/// Each holds one of the threads that sign-ins have; see that enough are left for those who need not wait.
constexpr int mostWaiting = 16;
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

/// Counts itself as long as it lives.
class Counted {
public:
    explicit Counted(std::atomic<int>& count)
        : m_count(count) {
        ++m_count;
    }
    ~Counted() { --m_count; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    std::atomic<int>& m_count;
};

} // namespace

SignInFailure SignInFailure::stalePage() {
    return {400, "Страница устарела. Попробуйте ещё раз."};
}

SignInService::SignInService(AccountStore& accounts, PasswordHasher& hasher, const SteadyClock& clock,
                             Pause pause)
    : m_accounts(accounts)
    , m_hasher(hasher)
    , m_pause(std::move(pause))
    , m_byNetworkAndAccount({.free = freeAttempts}, clock)
    , m_byNetwork({.free = freeAttemptsOfNetwork}, clock) {}

Account SignInService::signIn(const std::string& email, const std::string& password,
                              const std::string& network) {
    const auto address = normalised(email);
    const auto attempt = network + ' ' + address;
    wait(std::max(place(m_byNetwork, network, network), place(m_byNetworkAndAccount, attempt, network)),
         network);
    if (password.size() <= longestPassword) {
        const auto found = m_accounts.byEmail(address);
        if (found && !found->passwordHash.empty()) {
            if (m_hasher.verify(found->passwordHash, password)) {
                m_byNetworkAndAccount.forget(attempt);
                m_byNetwork.forgive(network);
                return found->account;
            }
        } else {
            m_hasher.verifyNothing(password);
        }
    }
    throw SignInFailure(401, "Неверная почта или пароль.");
}

Account SignInService::createAccount(const std::string& email, const std::string& password,
                                     const std::string& network) {
    const auto address = normalised(email);
    checkLength(password);
    wait(place(m_byNetwork, network, network), network);
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
                                   const std::string& wanted, const std::string& network) {
    checkLength(wanted);
    try {
        static_cast<void>(signIn(account.email, current, network));
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

std::chrono::milliseconds SignInService::place(AttemptBrake& brake, const std::string& key,
                                               const std::string& network) {
    const auto answer = brake.take(key);
    if (!answer.granted) {
        throw tooMany(answer.wait, network);
    }
    return answer.wait;
}

SignInFailure SignInService::tooMany(std::chrono::milliseconds wait, const std::string& network) {
    m_refusals.write("sign-in refused, too many attempts from " + network);
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(wait);
    return {429, "Слишком много попыток. Попробуйте снова через " + std::to_string(seconds.count()) + " с.",
            seconds};
}

void SignInService::wait(std::chrono::milliseconds time, const std::string& network) {
    if (time <= std::chrono::milliseconds::zero()) {
        return;
    }
    const Counted counted(m_waiting);
    if (m_waiting > mostWaiting) {
        throw tooMany(time, network);
    }
    m_pause(time);
}

} // namespace velmora::server
