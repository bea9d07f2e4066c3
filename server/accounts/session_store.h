#pragma once

#include "accounts/clock.h"

#include <optional>
#include <string>

namespace velmora::server {

class Database;

/// Sessions, each a family of refresh tokens of which only the newest is good, and only once. A token that
/// comes a second time has been copied: the whole family is revoked, and whoever holds it must sign in again.
class SessionStore {
public:
    struct Session {
        std::string id;
        std::string accountId;
        /// Known only here and to the client; the database has its hash.
        std::string refreshToken;
    };

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
    [[nodiscard]] std::string issue(const std::string& sessionId);
    void remove(const std::string& sessionId);
    void removeExpired();

    Database& m_database;
    Clock m_clock;
};

} // namespace velmora::server
