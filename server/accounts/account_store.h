#pragma once

#include "accounts/account.h"
#include "accounts/clock.h"
#include "accounts/preferences.h"

namespace velmora::server {

class Database;

/// Accounts and the preferences that belong to them. An e-mail address is kept in lower case, and is unique.
class AccountStore {
public:
    struct WithPassword {
        Account account;
        /// Empty for an account without a password.
        std::string passwordHash;
    };

    /// `initialLanguage` is what a new account's `transcribeLanguage` begins with.
    AccountStore(Database& database, std::string initialLanguage, Clock clock);

    /// Empty if the address is taken. Without a password hash nobody signs in by password.
    [[nodiscard]] std::optional<Account> create(const std::string& email,
                                                const std::optional<std::string>& passwordHash, bool isAdmin);

    [[nodiscard]] std::optional<Account> byId(const std::string& id);
    [[nodiscard]] std::optional<WithPassword> byIdWithPassword(const std::string& id);
    [[nodiscard]] std::optional<WithPassword> byEmail(const std::string& email);

    void setPasswordHash(const std::string& accountId, const std::string& passwordHash);

    [[nodiscard]] Preferences preferences(const std::string& accountId);

    /// The preferences after the change.
    Preferences patchPreferences(const std::string& accountId, const PreferencesPatch& patch);

private:
    [[nodiscard]] Preferences readPreferences(const std::string& accountId);
    [[nodiscard]] std::optional<WithPassword> find(const char* sql, const std::string& key);

    Database& m_database;
    std::string m_initialLanguage;
    Clock m_clock;
};

} // namespace velmora::server
