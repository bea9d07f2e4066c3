#include "backend/qt_http_transport.h"

#include "backend/one_shot_body.h"
#include "backend/qt_http_exchange.h"

#include <QHostAddress>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace velmora {
namespace {

constexpr int maximumRedirects = 10;

/// The system's proxies, except towards this machine.
class ProxiesButLoopback final : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
        const QString host = query.peerHostName();
        if (host == QLatin1String("localhost") || QHostAddress(host).isLoopback())
            return {QNetworkProxy(QNetworkProxy::NoProxy)};
        return systemProxyForQuery(query);
    }
};

bool sameOrigin(const QUrl& one, const QUrl& other) {
    const auto port = [](const QUrl& url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

std::optional<QUrl> redirectTarget(const HttpRequest& request, const OpenHttpReply& reply) {
    static constexpr std::array<qint64, 5> redirections{301, 302, 303, 307, 308};
    const QByteArray location = reply.headers.value("Location");
    if (request.method != "GET" || location.isEmpty() ||
        std::find(redirections.begin(), redirections.end(), reply.status) == redirections.end())
        return std::nullopt;
    const QUrl target = request.url.resolved(QUrl::fromEncoded(location));
    return target.isValid() && sameOrigin(request.url, target) ? std::optional(target) : std::nullopt;
}

} // namespace

QtHttpTransport::QtHttpTransport(MainLoop& loop)
    : m_loop(loop) {
    m_network.setProxyFactory(new ProxiesButLoopback); // owned by the manager
    m_network.setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
}

Task<OpenHttpReply> QtHttpTransport::open(HttpRequest request, std::stop_token stop) {
    for (int redirects = 0;; ++redirects) {
        if (stop.stop_requested())
            throw TransportError(QtHttpExchange::cancelledText());
        AsyncStream<OpenHttpReply> head =
            QtHttpExchange::begin(start(request), m_loop, request.totalTimeout, stop);
        std::optional<OpenHttpReply> reply = co_await head.next();
        const std::optional<QUrl> target = redirectTarget(request, *reply);
        if (!target || redirects == maximumRedirects)
            co_return *std::move(reply);
        request.url = *target;
    }
}

QNetworkReply* QtHttpTransport::start(const HttpRequest& request) {
    QNetworkRequest out(request.url);
    for (const auto& [name, value] : request.headers)
        out.setRawHeader(name, value);
    out.setTransferTimeout(static_cast<int>(request.inactivityTimeout.count()));
    out.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    out.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    out.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    out.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    if (request.method == "GET")
        return m_network.get(out);

    // Qt repeats a request when the connection closes before the reply. It must rewind the body for that, so
    // a body that can't be rewound and isn't buffered makes it fail instead, an empty one as well.
    out.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    out.setHeader(QNetworkRequest::ContentLengthHeader, request.body.size());
    auto* body = new OneShotBody(request.body);
    QNetworkReply* reply = m_network.sendCustomRequest(out, request.method, body);
    body->setParent(reply);
    return reply;
}

} // namespace velmora
