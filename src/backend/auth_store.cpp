#include "backend/auth_store.h"

#include "backend/backend_coder.h"
#include "foundation/private_file.h"
#include "foundation/user_defaults.h"

#include <QFile>
#include <QRandomGenerator>

namespace velmora {
namespace {

const QString authStateKey = QStringLiteral("pendingAuthState");
const QString asanaStateKey = QStringLiteral("pendingAsanaState");
const QString googleDriveStateKey = QStringLiteral("pendingGoogleDriveState");

/// None for a file that can't be read.
std::optional<Tokens> readTokens(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    try {
        return backendCoder.decode<Tokens>(file.readAll());
    } catch (const json::DecodingError&) {
        return std::nullopt;
    }
}

} // namespace

AuthStore::AuthStore(QString folder, UserDefaults& defaults, QObject* parent)
    : QObject(parent)
    , m_folder(std::move(folder))
    , m_defaults(defaults)
    , m_tokens(readTokens(filePath())) {
    removeUnfinished(filePath());
}

QString AuthStore::filePath() const {
    makePrivateFolder(m_folder);
    return m_folder + QStringLiteral("/auth-tokens.json");
}

void AuthStore::save(const QString& accessToken, const QString& refreshToken) {
    const Tokens tokens{accessToken, refreshToken};
    if (QFile::exists(filePath()) && !readTokens(filePath()))
        keepDamaged("sign-in", filePath());
    (void)replacePrivateFile(filePath(), backendCoder.encode(tokens));
    adopt(tokens);
}

void AuthStore::clear() {
    QFile::remove(filePath());
    adopt(std::nullopt);
}

void AuthStore::adopt(std::optional<Tokens> tokens) {
    if (tokens == m_tokens)
        return;
    const bool wasLoggedIn = isLoggedIn();
    m_tokens = std::move(tokens);
    Q_EMIT tokensChanged();
    if (isLoggedIn() != wasLoggedIn)
        Q_EMIT isLoggedInChanged();
}

QString AuthStore::issuePendingAuthState() {
    return issueState(authStateKey);
}

QString AuthStore::issueAsanaPendingState() {
    return issueState(asanaStateKey);
}

QString AuthStore::issueGoogleDrivePendingState() {
    return issueState(googleDriveStateKey);
}

bool AuthStore::consumePendingAuthState(const QString& state) {
    return consumeState(authStateKey, state);
}

bool AuthStore::consumeAsanaPendingState(const QString& state) {
    return consumeState(asanaStateKey, state);
}

bool AuthStore::consumeGoogleDrivePendingState(const QString& state) {
    return consumeState(googleDriveStateKey, state);
}

QString AuthStore::issueState(const QString& key) {
    std::array<quint32, 6> words; // 24 bytes
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    const QByteArray bytes(reinterpret_cast<const char*>(words.data()), sizeof words);
    const QString state = QString::fromLatin1(bytes.toHex());
    m_defaults.set(key, state);
    return state;
}

bool AuthStore::consumeState(const QString& key, const QString& state) {
    const std::optional<QString> issued = m_defaults.string(key);
    m_defaults.remove(key);
    return issued && !issued->isEmpty() && *issued == state;
}

} // namespace velmora
