#pragma once

#include "backend/tokens.h"

#include <QObject>

namespace velmora {

class UserDefaults;

/// The tokens, in memory and in a file that only the user can read, and the one-shot states that tell a
/// callback we asked for from a forged one.
class AuthStore : public QObject {
    Q_OBJECT

public:
    /// Reads "auth-tokens.json" in `folder`. A file that can't be read means signed out; the next
    /// sign-in sets it aside with ".damaged" at its name.
    AuthStore(QString folder, UserDefaults& defaults, QObject* parent = nullptr);

    [[nodiscard]] const std::optional<Tokens>& tokens() const { return m_tokens; }
    [[nodiscard]] bool isLoggedIn() const { return m_tokens.has_value(); }

    /// A failure to write is ignored: the session goes on in memory.
    void save(const QString& accessToken, const QString& refreshToken);
    void clear();

    /// A new state; an older one of the same kind is no good any more.
    [[nodiscard]] QString issuePendingAuthState();
    [[nodiscard]] QString issueAsanaPendingState();
    [[nodiscard]] QString issueGoogleDrivePendingState();

    /// Whether this is the state issued last. A state is gone after one try, whatever the result.
    [[nodiscard]] bool consumePendingAuthState(const QString& state);
    [[nodiscard]] bool consumeAsanaPendingState(const QString& state);
    [[nodiscard]] bool consumeGoogleDrivePendingState(const QString& state);

Q_SIGNALS:
    void tokensChanged();
    void isLoggedInChanged();

private:
    /// Makes the folder.
    [[nodiscard]] QString filePath() const;
    void adopt(std::optional<Tokens> tokens);
    [[nodiscard]] QString issueState(const QString& key);
    [[nodiscard]] bool consumeState(const QString& key, const QString& state);

    const QString m_folder;
    UserDefaults& m_defaults;
    std::optional<Tokens> m_tokens;
};

} // namespace velmora
