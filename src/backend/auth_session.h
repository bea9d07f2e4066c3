#pragma once

#include "backend/account_session.h"
#include "backend/backend_coder.h"
#include "backend/empty_response.h"
#include "backend/http_transport.h"
#include "backend/me_response.h"
#include "backend/preferences_patch.h"
#include "foundation/main_loop.h"

#include <QObject>

namespace velmora {

class AuthStore;

/// The signed-in account towards the backend: every authorised request goes through here.
class AuthSession final : public QObject, public AccountSession {
    Q_OBJECT

public:
    AuthSession(HttpTransport& transport, AuthStore& store, MainLoop& loop, QUrl baseURL,
                QObject* parent = nullptr);

    /// The account and its preferences as last read. They stay when the session expires, so look at
    /// isLoggedIn() first; only logout() empties them.
    [[nodiscard]] const std::optional<BackendUser>& user() const { return m_user; }
    [[nodiscard]] const std::optional<BackendPreferences>& preferences() const { return m_preferences; }
    /// While refreshMe() runs.
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] bool isLoggedIn() const override;

    Task<> refreshMe() override;
    Task<> ensureFreshToken() override;
    /// Never fails: signed out here, whatever the server says.
    Task<> logout();

    /// Changes the preferences here at once, and on the server after half a second without a further change,
    /// all of them in one request. A failure there is dropped; the next refreshMe() then undoes the change.
    void patchPreferences(const PreferencesPatch& patch);
    /// Sends the patch at once and takes over what the server makes of it. Throws as authedRequest() does.
    Task<BackendPreferences> updatePreferences(PreferencesPatch patch);

    /// A request with the current access token, for clients with a send loop of their own. `path` begins with
    /// or without "/" and may carry a percent-encoded query. An empty `contentType` sets no header. Throws
    /// BackendError.
    [[nodiscard]] HttpRequest buildAuthedRequest(const QString& path, const QByteArray& method,
                                                 const QByteArray& contentType = {}) const;

    /// Sends, after a 401 once more with a rotated token. Throws BackendError for every status outside 200 to
    /// 299, TransportError when there was no reply.
    Task<HttpReply> rawAuthedRequest(QString path, QByteArray method, QByteArray body = {},
                                     QByteArray contentType = {});

    /// The same, and decodes the reply; throws json::DecodingError when it isn't a Reply. An EmptyResponse
    /// doesn't look at it.
    template<typename Reply>
    Task<Reply> authedRequest(QString path, QByteArray method = "GET", QByteArray body = {},
                              QByteArray contentType = {}) {
        const HttpReply reply = co_await rawAuthedRequest(std::move(path), std::move(method), std::move(body),
                                                          std::move(contentType));
        if constexpr (std::is_same_v<Reply, EmptyResponse>)
            co_return Reply();
        else
            co_return backendCoder.decode<Reply>(reply.body);
    }

    /// Joins the rotation in flight or starts one; done when the tokens are new. For clients that got a 401
    /// of their own.
    Task<> rotateAccessTokenPublic() { return rotateAccessToken(); }

Q_SIGNALS:
    void userChanged();
    void preferencesChanged();
    void isLoadingChanged();

private:
    Task<HttpReply> send(HttpRequest request);
    Task<> rotateAccessToken();
    Task<> performRotation();
    Task<> sendAccumulatedPatch();
    void setUser(std::optional<BackendUser> user);
    void setPreferences(std::optional<BackendPreferences> preferences);
    void setLoading(bool isLoading);

    HttpTransport& m_transport;
    AuthStore& m_store;
    MainLoop& m_loop;
    const QUrl m_baseURL;
    std::optional<BackendUser> m_user;
    std::optional<BackendPreferences> m_preferences;
    bool m_isLoading = false;
    std::shared_ptr<Task<>> m_refreshTask; // the one rotation in flight
    quint64 m_logouts = 0;                 // what was asked before one isn't news any more
    PreferencesPatch m_accumulatedPatch;   // not sent yet
    Timer m_pendingPatchTask;              // the pause after a change
    TaskScope m_scope;                     // last: requests in flight end before the rest goes
};

} // namespace velmora
