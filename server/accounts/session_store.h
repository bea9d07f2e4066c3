#pragma once

#include "accounts/clock.h"
#include "accounts/session.h"

#include <optional>

namespace velmora::server {

class Database;

/// Sessions, each a family of refresh tokens of which only the newest is good, and only once. A token that
/// comes again has been copied: the whole family is revoked, and whoever holds it must sign in again.
///
/// A reply can get lost on its way, though, and then the client has nothing but the old token. So the last
/// one that was swapped may come again for a while, as long as its successor hasn't been used, and gets that
/// same successor. For this no token is stored: the successor is computed from the old token, which only the
/// client has, and a seed, which only the database has, and which is erased when that time is over.
class SessionStore {
public:
    static constexpr std::chrono::seconds grace{30};

    /// What removes expired sessions, expired tokens and seeds. Run often, so none may walk over a whole
    /// table.
    static constexpr auto sweepSessions =
        "DELETE FROM sessions WHERE id IN (SELECT session_id FROM refresh_tokens WHERE expires_at <= ?1) "
        "AND NOT EXISTS (SELECT 1 FROM refresh_tokens t WHERE t.session_id = sessions.id AND t.expires_at > "
        "?1)";
    static constexpr auto sweepTokens = "DELETE FROM refresh_tokens WHERE expires_at <= ?";
    static constexpr auto sweepSeeds =
        "UPDATE refresh_tokens SET seed = NULL WHERE seed IS NOT NULL AND replaced_at <= ?";

    SessionStore(Database& database, Clock clock);

    [[nodiscard]] Session open(const std::string& accountId);

    /// Swaps a refresh token for the next one. Empty if it is unknown, expired, used before or revoked.
    [[nodiscard]] std::optional<Session> rotate(const std::string& refreshToken);

    void revoke(const std::string& sessionId);
    void revokeAll(const std::string& accountId);

    /// How many sessions of the account can still be used.
    [[nodiscard]] int count(const std::string& accountId);

    [[nodiscard]] bool isAlive(const std::string& sessionId);

private:
    [[nodiscard]] Session replace(const std::string& refreshToken, const std::string& id,
                                  const std::string& accountId);
    void store(const Session& session);
    [[nodiscard]] std::chrono::sys_seconds now() const;
    void remove(const std::string& sessionId);
    void removeExpired();

    Database& m_database;
    Clock m_clock;
};

} // namespace velmora::server
