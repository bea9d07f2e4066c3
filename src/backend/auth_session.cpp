#include "backend/auth_session.h"

#include "backend/auth_store.h"
#include "backend/backend_error.h"
#include "backend/backend_url.h"
#include "backend/jwt_expiry.h"

#include <QScopeGuard>

namespace velmora {
namespace {

constexpr double freshForSeconds = 120;
constexpr auto patchPause = std::chrono::milliseconds(500);

struct RefreshRequest {
    QString refreshToken;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("refreshToken", &RefreshRequest::refreshToken));
    }
};

} // namespace

AuthSession::AuthSession(HttpTransport& transport, AuthStore& store, MainLoop& loop, QUrl baseURL,
                         QObject* parent)
    : QObject(parent)
    , m_transport(transport)
    , m_store(store)
    , m_loop(loop)
    , m_baseURL(std::move(baseURL)) {}

bool AuthSession::isLoggedIn() const {
    return m_store.isLoggedIn();
}

HttpRequest AuthSession::buildAuthedRequest(const QString& path, const QByteArray& method,
                                            const QByteArray& contentType) const {
    const std::optional<Tokens>& tokens = m_store.tokens();
    if (!tokens)
        throw BackendError::notLoggedIn();
    const QString relative = path.startsWith(QLatin1Char('/')) ? path.mid(1) : path;
    const qsizetype mark = relative.indexOf(QLatin1Char('?'));
    HttpRequest request;
    request.url = appendingPathComponent(m_baseURL, relative.left(mark));
    if (mark >= 0)
        request.url.setQuery(relative.mid(mark + 1), QUrl::StrictMode);
    if (!request.url.isValid())
        throw BackendError::badURL(path);
    request.method = method;
    request.headers.set("Authorization", "Bearer " + tokens->accessToken.toUtf8());
    if (!contentType.isEmpty())
        request.headers.set("Content-Type", contentType);
    return request;
}

Task<HttpReply> AuthSession::send(HttpRequest request) {
    request.headers.set("User-Agent", backendUserAgent);
    return m_transport.send(std::move(request), m_scope.token());
}

Task<HttpReply> AuthSession::rawAuthedRequest(QString path, QByteArray method, QByteArray body,
                                              QByteArray contentType) {
    const std::stop_token gone = m_scope.token();
    for (bool retried = false;; retried = true) {
        HttpRequest request = buildAuthedRequest(path, method, contentType);
        request.body = body;
        HttpReply reply = co_await send(std::move(request));
        if (reply.status == 0)
            throw BackendError::transportError();
        if (reply.status != 401) {
            throwIfNotOk(reply.status, reply.body);
            co_return reply;
        }
        bool rotated = false;
        if (!retried) {
            try {
                co_await rotateAccessToken();
                rotated = true;
            } catch (...) {
                // The session counts as expired, whatever it was: signing in anew helps in every case.
            }
            if (gone.stop_requested())
                throw TransportError(QStringLiteral("the session is gone"));
        }
        if (!rotated) {
            m_store.clear();
            throw BackendError::sessionExpired();
        }
    }
}

Task<> AuthSession::rotateAccessToken() {
    if (const std::shared_ptr<Task<>> running = m_refreshTask) {
        co_await *running;
        co_return;
    }
    const auto rotation = std::make_shared<Task<>>(performRotation());
    m_refreshTask = rotation;
    const auto over = qScopeGuard([this, gone = m_scope.token()] {
        if (!gone.stop_requested())
            m_refreshTask = nullptr;
    });
    co_await *rotation;
}

Task<> AuthSession::performRotation() {
    const std::optional<Tokens> tokens = m_store.tokens();
    if (!tokens)
        throw BackendError::notLoggedIn();
    HttpRequest request;
    request.url = appendingPathComponent(m_baseURL, QStringLiteral("v1/auth/refresh"));
    request.method = "POST";
    request.headers.set("Content-Type", "application/json");
    request.body = backendCoder.encode(RefreshRequest{tokens->refreshToken});
    const HttpReply reply = co_await send(std::move(request));
    if (reply.status != 200)
        throw BackendError::refreshFailed(reply.status);
    const Tokens fresh = backendCoder.decode<Tokens>(reply.body);
    // Who signed out or in again during the wait keeps what that gave.
    if (m_store.tokens() == tokens)
        m_store.save(fresh.accessToken, fresh.refreshToken);
}

Task<> AuthSession::ensureFreshToken() {
    const std::optional<Tokens> tokens = m_store.tokens();
    if (!tokens)
        co_return;
    const std::optional<double> expiry = jwtExpiry(tokens->accessToken);
    if (!expiry || *expiry - toUnixSeconds(m_loop.date()) >= freshForSeconds)
        co_return;
    try {
        co_await rotateAccessToken();
    } catch (...) {
        // The next request gets a 401 and tries once more.
    }
}

Task<> AuthSession::refreshMe() {
    if (!isLoggedIn())
        co_return;
    const std::stop_token gone = m_scope.token();
    const quint64 logouts = m_logouts;
    setLoading(true);
    try {
        MeResponse me = co_await authedRequest<MeResponse>(QStringLiteral("/v1/auth/me"));
        if (m_logouts == logouts) {
            setUser(std::move(me.user));
            setPreferences(std::move(me.preferences));
        }
    } catch (...) {
        // The old values stay.
    }
    if (!gone.stop_requested())
        setLoading(false);
}

void AuthSession::patchPreferences(const PreferencesPatch& patch) {
    setPreferences(patch.appliedTo(m_preferences.value_or(BackendPreferences())));
    m_accumulatedPatch.merge(patch);
    m_pendingPatchTask = m_loop.after(
        patchPause, [this] { m_scope.start(QStringLiteral("preferences"), sendAccumulatedPatch()); });
}

Task<> AuthSession::sendAccumulatedPatch() {
    co_await updatePreferences(std::exchange(m_accumulatedPatch, {}));
}

Task<BackendPreferences> AuthSession::updatePreferences(PreferencesPatch patch) {
    const quint64 logouts = m_logouts;
    BackendPreferences preferences = co_await authedRequest<BackendPreferences>(
        QStringLiteral("/v1/me/preferences"), "PATCH", backendCoder.encode(patch), "application/json");
    if (m_logouts == logouts)
        setPreferences(preferences);
    co_return preferences;
}

Task<> AuthSession::logout() {
    const std::stop_token gone = m_scope.token();
    m_pendingPatchTask.invalidate();
    m_accumulatedPatch = {};
    if (isLoggedIn()) {
        try {
            co_await authedRequest<EmptyResponse>(QStringLiteral("/v1/auth/logout"), "POST");
        } catch (...) {
            // Signed out here all the same.
        }
    }
    if (gone.stop_requested())
        co_return;
    ++m_logouts;
    m_store.clear();
    setUser(std::nullopt);
    setPreferences(std::nullopt);
}

void AuthSession::setUser(std::optional<BackendUser> user) {
    if (m_user == user)
        return;
    m_user = std::move(user);
    Q_EMIT userChanged();
}

void AuthSession::setPreferences(std::optional<BackendPreferences> preferences) {
    if (m_preferences == preferences)
        return;
    m_preferences = std::move(preferences);
    Q_EMIT preferencesChanged();
}

void AuthSession::setLoading(bool isLoading) {
    if (m_isLoading == isLoading)
        return;
    m_isLoading = isLoading;
    Q_EMIT isLoadingChanged();
}

} // namespace velmora
