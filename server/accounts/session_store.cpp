#include "accounts/session_store.h"

#include "accounts/database.h"
#include "accounts/random_token.h"
#include "accounts/statement.h"

#include <sodium.h>

#include <array>

namespace velmora::server {

namespace {

constexpr std::chrono::days lifetime{60};

std::string hashOf(const std::string& token) {
    std::array<unsigned char, crypto_generichash_BYTES> hash{};
    crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(token.data()),
                       token.size(), nullptr, 0);
    std::string hex(hash.size() * 2 + 1, '\0');
    sodium_bin2hex(hex.data(), hex.size(), hash.data(), hash.size());
    hex.pop_back();
    return hex;
}

} // namespace

SessionStore::SessionStore(Database& database, Clock clock)
    : m_database(database)
    , m_clock(std::move(clock)) {}

SessionStore::Session SessionStore::open(const std::string& accountId) {
    return m_database.transaction([&] {
        removeExpired();
        Session session{.id = randomToken(), .accountId = accountId, .refreshToken = {}};
        m_database.prepare("INSERT INTO sessions (id, account_id) VALUES (?, ?)")
            .bind(session.id)
            .bind(accountId)
            .run();
        session.refreshToken = issue(session.id);
        return session;
    });
}

std::optional<SessionStore::Session> SessionStore::rotate(const std::string& refreshToken) {
    return m_database.transaction([&]() -> std::optional<Session> {
        const auto hash = hashOf(refreshToken);
        Session session;
        bool used = false;
        {
            auto row =
                m_database.prepare("SELECT s.id, s.account_id, t.used, t.expires_at FROM refresh_tokens t "
                                   "JOIN sessions s ON s.id = t.session_id WHERE t.hash = ?");
            if (!row.bind(hash).step() || row.time(3) <= m_clock()) {
                return std::nullopt;
            }
            session = {.id = row.text(0), .accountId = row.text(1), .refreshToken = {}};
            used = row.boolean(2);
        }
        if (used) {
            remove(session.id);
            return std::nullopt;
        }
        m_database.prepare("UPDATE refresh_tokens SET used = 1 WHERE hash = ?").bind(hash).run();
        session.refreshToken = issue(session.id);
        return session;
    });
}

void SessionStore::revoke(const std::string& sessionId) {
    m_database.transaction([&] { remove(sessionId); });
}

void SessionStore::revokeAll(const std::string& accountId) {
    m_database.transaction(
        [&] { m_database.prepare("DELETE FROM sessions WHERE account_id = ?").bind(accountId).run(); });
}

int SessionStore::count(const std::string& accountId) {
    return m_database.transaction([&] {
        removeExpired();
        auto row = m_database.prepare("SELECT COUNT(*) FROM sessions WHERE account_id = ?");
        return row.bind(accountId).step() ? static_cast<int>(row.integer(0)) : 0;
    });
}

bool SessionStore::isAlive(const std::string& sessionId) {
    return m_database.transaction(
        [&] { return m_database.prepare("SELECT 1 FROM sessions WHERE id = ?").bind(sessionId).step(); });
}

std::string SessionStore::issue(const std::string& sessionId) {
    auto token = randomToken();
    m_database.prepare("INSERT INTO refresh_tokens (hash, session_id, expires_at) VALUES (?, ?, ?)")
        .bind(hashOf(token))
        .bind(sessionId)
        .bind(std::chrono::floor<std::chrono::seconds>(m_clock()) + lifetime)
        .run();
    return token;
}

void SessionStore::remove(const std::string& sessionId) {
    m_database.prepare("DELETE FROM sessions WHERE id = ?").bind(sessionId).run();
}

void SessionStore::removeExpired() {
    m_database.prepare("DELETE FROM refresh_tokens WHERE expires_at <= ?")
        .bind(std::chrono::floor<std::chrono::seconds>(m_clock()))
        .run();
    m_database.prepare("DELETE FROM sessions WHERE id NOT IN (SELECT session_id FROM refresh_tokens)").run();
}

} // namespace velmora::server
