#include "accounts/session_store.h"

#include "accounts/base64_url.h"
#include "accounts/database.h"
#include "accounts/random_token.h"
#include "accounts/statement.h"
#include "app/log.h"

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

/// As good as random for whoever lacks the seed, and the same each time for who has both.
std::string successorOf(const std::string& token, const std::string& seed) {
    std::string bytes(32, '\0');
    crypto_generichash(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size(),
                       reinterpret_cast<const unsigned char*>(token.data()), token.size(),
                       reinterpret_cast<const unsigned char*>(seed.data()), seed.size());
    return toBase64Url(bytes);
}

Session sessionWith(const std::string& refreshToken, const std::string& id, const std::string& accountId,
                    std::chrono::sys_seconds issuedAt) {
    return {.id = id,
            .accountId = accountId,
            .refreshToken = refreshToken,
            .pair = hashOf(refreshToken),
            .issuedAt = issuedAt};
}

} // namespace

SessionStore::SessionStore(Database& database, Clock clock)
    : m_database(database)
    , m_clock(std::move(clock)) {}

Session SessionStore::open(const std::string& accountId) {
    return m_database.transaction([&] {
        removeExpired();
        auto session = sessionWith(randomToken(), randomToken(), accountId, now());
        m_database.prepare("INSERT INTO sessions (id, account_id) VALUES (?, ?)")
            .bind(session.id)
            .bind(accountId)
            .run();
        store(session);
        return session;
    });
}

std::optional<Session> SessionStore::rotate(const std::string& refreshToken) {
    return m_database.transaction([&]() -> std::optional<Session> {
        removeExpired();
        const auto hash = hashOf(refreshToken);
        auto row = m_database.prepare("SELECT s.id, s.account_id, t.replaced_at, t.seed "
                                      "FROM refresh_tokens t JOIN sessions s ON s.id = t.session_id "
                                      "WHERE t.hash = ?");
        if (!row.bind(hash).step()) {
            return std::nullopt;
        }
        const auto id = row.text(0);
        const auto accountId = row.text(1);
        const bool used = !row.isNull(2);
        if (!used) {
            return replace(refreshToken, id, accountId);
        }
        if (const auto seed = row.text(3); !seed.empty()) {
            return sessionWith(successorOf(refreshToken, seed), id, accountId, row.time(2));
        }
        log("a refresh token came a second time: ended a session of account " + accountId);
        remove(id);
        return std::nullopt;
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

Session SessionStore::replace(const std::string& refreshToken, const std::string& id,
                              const std::string& accountId) {
    // The reply that brought this token has arrived, and need not be repeated any more.
    m_database.prepare("UPDATE refresh_tokens SET seed = NULL WHERE session_id = ? AND seed IS NOT NULL")
        .bind(id)
        .run();
    const auto seed = randomToken();
    auto session = sessionWith(successorOf(refreshToken, seed), id, accountId, now());
    m_database.prepare("UPDATE refresh_tokens SET replaced_at = ?, seed = ? WHERE hash = ?")
        .bind(session.issuedAt)
        .bind(seed)
        .bind(hashOf(refreshToken))
        .run();
    store(session);
    return session;
}

void SessionStore::store(const Session& session) {
    m_database.prepare("INSERT INTO refresh_tokens (hash, session_id, expires_at) VALUES (?, ?, ?)")
        .bind(session.pair)
        .bind(session.id)
        .bind(session.issuedAt + lifetime)
        .run();
}

std::chrono::sys_seconds SessionStore::now() const {
    return std::chrono::floor<std::chrono::seconds>(m_clock());
}

void SessionStore::remove(const std::string& sessionId) {
    m_database.prepare("DELETE FROM sessions WHERE id = ?").bind(sessionId).run();
}

void SessionStore::removeExpired() {
    m_database.prepare(sweepSessions).bind(now()).run();
    m_database.prepare(sweepTokens).bind(now()).run();
    m_database.prepare(sweepSeeds).bind(now() - grace).run();
}

} // namespace velmora::server
