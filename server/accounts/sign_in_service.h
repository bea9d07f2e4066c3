#pragma once

#include "accounts/account.h"
#include "accounts/attempt_brake.h"
#include "accounts/local_user.h"
#include "app/rare_log.h"

#include <atomic>
#include <functional>
#include <stdexcept>

namespace velmora::server {

class AccountStore;
class PasswordHasher;

/// Why somebody can't be let in: a Russian sentence for the page, and the page's status.
class SignInFailure : public std::runtime_error {
public:
    SignInFailure(int status, const std::string& message, std::chrono::seconds retryAfter = {})
        : std::runtime_error(message)
        , m_status(status)
        , m_retryAfter(retryAfter) {}

    /// The form was made too long ago, or not here.
    [[nodiscard]] static SignInFailure stalePage();

    [[nodiscard]] int status() const { return m_status; }

    /// When to try again; zero where that is up to the user.
    [[nodiscard]] std::chrono::seconds retryAfter() const { return m_retryAfter; }

private:
    int m_status;
    std::chrono::seconds m_retryAfter;
};

/// Decides who gets in. All methods fail with SignInFailure.
///
/// Guesses are counted for a client's network and an account together, and for the network over all accounts.
/// What is guessed from elsewhere is never held against an account's owner, who would be locked out by any
/// stranger.
class SignInService {
public:
    /// Lets that much time pass on the calling thread.
    using Pause = std::function<void(std::chrono::milliseconds)>;

    SignInService(AccountStore& accounts, PasswordHasher& hasher, const SteadyClock& clock, Pause pause);

    /// `network` is where the client is, see clientNetwork(). Takes its time for one who has guessed before.
    [[nodiscard]] Account signIn(const std::string& email, const std::string& password,
                                 const std::string& network);

    [[nodiscard]] Account createAccount(const std::string& email, const std::string& password,
                                        const std::string& network);

    /// Asks for the password there is first, as signIn() does.
    void changePassword(const Account& account, const std::string& current, const std::string& wanted,
                        const std::string& network);

    /// The account of the machine's user, made at the first time.
    [[nodiscard]] Account signInLocally(const LocalUser& user);

private:
    [[nodiscard]] std::chrono::milliseconds place(AttemptBrake& brake, const std::string& key,
                                                  const std::string& network);
    [[nodiscard]] SignInFailure tooMany(std::chrono::milliseconds wait, const std::string& network);
    void wait(std::chrono::milliseconds time, const std::string& network);

    AccountStore& m_accounts;
    PasswordHasher& m_hasher;
    Pause m_pause;
    AttemptBrake m_byNetworkAndAccount;
    AttemptBrake m_byNetwork;
    /// How many attempts are being made to wait. Each has a thread.
    std::atomic<int> m_waiting = 0;
    RareLog m_refusals;
};

} // namespace velmora::server
