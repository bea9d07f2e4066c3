#include "accounts/account_store.h"

#include "accounts/database.h"
#include "accounts/statement.h"

#include <Poco/UUIDGenerator.h>

#include <stdexcept>

namespace velmora::server {

AccountStore::AccountStore(Database& database, std::string initialLanguage, Clock clock)
    : m_database(database)
    , m_initialLanguage(std::move(initialLanguage))
    , m_clock(std::move(clock)) {}

std::optional<Account> AccountStore::create(const std::string& email,
                                            const std::optional<std::string>& passwordHash, bool isAdmin) {
    const Account account{.id = Poco::UUIDGenerator::defaultGenerator().createRandom().toString(),
                          .email = email,
                          .emailVerifiedAt = std::nullopt,
                          .isAdmin = isAdmin,
                          .createdAt = std::chrono::floor<std::chrono::seconds>(m_clock())};
    return m_database.transaction([&]() -> std::optional<Account> {
        const int added =
            m_database
                .prepare("INSERT INTO accounts (id, email, password_hash, is_admin, created_at) "
                         "VALUES (?, ?, ?, ?, ?) ON CONFLICT (email) DO NOTHING")
                .bind(account.id)
                .bind(account.email)
                .bind(passwordHash)
                .bind(account.isAdmin)
                .bind(account.createdAt)
                .run();
        if (added == 0) {
            return std::nullopt;
        }
        m_database
            .prepare("INSERT INTO preferences (account_id, transcribe_language, cleanup_enabled, "
                     "dev_mode_enabled) VALUES (?, ?, 1, 0)")
            .bind(account.id)
            .bind(m_initialLanguage)
            .run();
        return account;
    });
}

std::optional<Account> AccountStore::byId(const std::string& id) {
    auto found = byIdWithPassword(id);
    return found ? std::optional(std::move(found->account)) : std::nullopt;
}

std::optional<AccountStore::WithPassword> AccountStore::byIdWithPassword(const std::string& id) {
    return find("SELECT id, email, email_verified_at, is_admin, created_at, password_hash "
                "FROM accounts WHERE id = ?",
                id);
}

std::optional<AccountStore::WithPassword> AccountStore::byEmail(const std::string& email) {
    return find("SELECT id, email, email_verified_at, is_admin, created_at, password_hash "
                "FROM accounts WHERE email = ?",
                email);
}

std::optional<AccountStore::WithPassword> AccountStore::find(const char* sql, const std::string& key) {
    return m_database.transaction([&]() -> std::optional<WithPassword> {
        auto row = m_database.prepare(sql);
        if (!row.bind(key).step()) {
            return std::nullopt;
        }
        return WithPassword{
            .account = {.id = row.text(0),
                        .email = row.text(1),
                        .emailVerifiedAt = row.isNull(2) ? std::nullopt : std::optional(row.time(2)),
                        .isAdmin = row.boolean(3),
                        .createdAt = row.time(4)},
            .passwordHash = row.text(5)};
    });
}

void AccountStore::setPasswordHash(const std::string& accountId, const std::string& passwordHash) {
    m_database.transaction([&] {
        m_database.prepare("UPDATE accounts SET password_hash = ? WHERE id = ?")
            .bind(passwordHash)
            .bind(accountId)
            .run();
    });
}

Preferences AccountStore::preferences(const std::string& accountId) {
    return m_database.transaction([&] { return readPreferences(accountId); });
}

Preferences AccountStore::patchPreferences(const std::string& accountId, const PreferencesPatch& patch) {
    return m_database.transaction([&] {
        const auto changed = patch.appliedTo(readPreferences(accountId));
        m_database
            .prepare("UPDATE preferences SET transcribe_language = ?, cleanup_enabled = ?, "
                     "dev_mode_enabled = ?, meeting_storage_mode = ? WHERE account_id = ?")
            .bind(changed.transcribeLanguage)
            .bind(changed.cleanupEnabled)
            .bind(changed.devModeEnabled)
            .bind(changed.meetingStorageMode)
            .bind(accountId)
            .run();
        return changed;
    });
}

Preferences AccountStore::readPreferences(const std::string& accountId) {
    auto row = m_database.prepare("SELECT transcribe_language, cleanup_enabled, dev_mode_enabled, "
                                  "meeting_storage_mode FROM preferences WHERE account_id = ?");
    if (!row.bind(accountId).step()) {
        throw std::runtime_error("account without preferences");
    }
    return {.transcribeLanguage = row.text(0),
            .cleanupEnabled = row.boolean(1),
            .devModeEnabled = row.boolean(2),
            .meetingStorageMode = row.isNull(3) ? std::nullopt : std::optional(row.text(3))};
}

} // namespace velmora::server
