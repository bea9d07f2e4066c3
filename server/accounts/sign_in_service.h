#pragma once

#include "accounts/account.h"
#include "accounts/clock.h"
#include "accounts/local_user.h"
#include "accounts/rate_limiter.h"

#include <stdexcept>

namespace velmora::server {

class AccountStore;
class PasswordHasher;

/// Why somebody can't be let in: a Russian sentence for the page, and the page's status.
class SignInFailure : public std::runtime_error {
public:
    SignInFailure(int status, const std::string& message)
        : std::runtime_error(message)
        , m_status(status) {}

    /// The form was made too long ago, or not here.
    [[nodiscard]] static SignInFailure stalePage();

    [[nodiscard]] int status() const { return m_status; }

private:
    int m_status;
};

/// Decides who gets in. All methods fail with SignInFailure.
class SignInService {
public:
    SignInService(AccountStore& accounts, PasswordHasher& hasher, const Clock& clock);

    /// `peer` is the client's address; attempts are limited for it and for the e-mail address.
    [[nodiscard]] Account signIn(const std::string& email, const std::string& password,
                                 const std::string& peer);

    [[nodiscard]] Account createAccount(const std::string& email, const std::string& password,
                                        const std::string& peer);

    /// Asks for the password there is first, as signIn() does.
    void changePassword(const Account& account, const std::string& current, const std::string& wanted,
                        const std::string& peer);

    /// The account of the machine's user, made at the first time.
    [[nodiscard]] Account signInLocally(const LocalUser& user);

private:
    void takeAttempt(RateLimiter& limiter, const std::string& key);

    AccountStore& m_accounts;
    PasswordHasher& m_hasher;
    RateLimiter m_attemptsByEmail;
    RateLimiter m_attemptsByPeer;
};

} // namespace velmora::server
