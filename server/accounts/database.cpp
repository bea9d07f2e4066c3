#include "accounts/database.h"

#include "accounts/statement.h"

#include <sqlite3.h>

#include <array>
#include <stdexcept>
#include <string>

namespace velmora::server {

namespace {

constexpr auto firstSchema = R"(
CREATE TABLE IF NOT EXISTS accounts (
    id TEXT PRIMARY KEY,
    email TEXT NOT NULL UNIQUE,
    password_hash TEXT,
    email_verified_at INTEGER,
    is_admin INTEGER NOT NULL,
    created_at INTEGER NOT NULL
);
CREATE TABLE IF NOT EXISTS preferences (
    account_id TEXT PRIMARY KEY REFERENCES accounts(id) ON DELETE CASCADE,
    transcribe_language TEXT NOT NULL,
    cleanup_enabled INTEGER NOT NULL,
    dev_mode_enabled INTEGER NOT NULL,
    meeting_storage_mode TEXT
);
CREATE TABLE IF NOT EXISTS sessions (
    id TEXT PRIMARY KEY,
    account_id TEXT NOT NULL REFERENCES accounts(id) ON DELETE CASCADE
);
CREATE TABLE IF NOT EXISTS refresh_tokens (
    hash TEXT PRIMARY KEY,
    session_id TEXT NOT NULL REFERENCES sessions(id) ON DELETE CASCADE,
    expires_at INTEGER NOT NULL,
    used INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX IF NOT EXISTS refresh_tokens_by_session ON refresh_tokens(session_id);
)";

/// What has changed since, in order; a file knows by its user_version how many of these it has seen.
constexpr std::array changes{
    R"(
ALTER TABLE refresh_tokens ADD COLUMN replaced_at INTEGER;
ALTER TABLE refresh_tokens ADD COLUMN seed TEXT;
UPDATE refresh_tokens SET replaced_at = 0 WHERE used;
ALTER TABLE refresh_tokens DROP COLUMN used;
CREATE INDEX refresh_tokens_by_expiry ON refresh_tokens(expires_at);
CREATE INDEX refresh_tokens_with_seed ON refresh_tokens(replaced_at) WHERE seed IS NOT NULL;
)"};

} // namespace

Database::Database(const std::filesystem::path& file) {
    if (sqlite3_open(file.c_str(), &m_connection) != SQLITE_OK) {
        const std::string reason = sqlite3_errmsg(m_connection);
        sqlite3_close(m_connection);
        throw std::runtime_error("cannot open " + file.string() + ": " + reason);
    }
    try {
        sqlite3_busy_timeout(m_connection, 5000);
        execute("PRAGMA journal_mode = WAL");
        execute("PRAGMA synchronous = FULL");
        execute("PRAGMA foreign_keys = ON");
        transaction([this] { bringUpToDate(); });
    } catch (...) {
        sqlite3_close(m_connection);
        throw;
    }
}

Database::~Database() {
    sqlite3_close(m_connection);
}

Statement Database::prepare(const char* sql) {
    return Statement(m_connection, sql);
}

void Database::bringUpToDate() {
    execute(firstSchema);
    std::size_t version = 0;
    {
        auto row = prepare("PRAGMA user_version");
        row.step();
        version = static_cast<std::size_t>(row.integer(0));
    }
    if (version > changes.size()) {
        throw std::runtime_error("the database is of a newer version of this server");
    }
    for (; version < changes.size(); ++version) {
        execute(changes[version]);
        execute(("PRAGMA user_version = " + std::to_string(version + 1)).c_str());
    }
}

void Database::execute(const char* sql) {
    if (sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(m_connection));
    }
}

Database::Transaction::Transaction(Database& database)
    : m_database(database) {
    m_database.execute("BEGIN IMMEDIATE");
}

Database::Transaction::~Transaction() {
    if (m_open) {
        sqlite3_exec(m_database.m_connection, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void Database::Transaction::commit() {
    m_database.execute("COMMIT");
    m_open = false;
}

} // namespace velmora::server
