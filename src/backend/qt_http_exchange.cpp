#include "backend/qt_http_exchange.h"

#include <QCoreApplication>
#include <QNetworkReply>

namespace velmora {
namespace {

// The user reads these.
QString timedOutText() {
    return QStringLiteral("Сервер не ответил вовремя");
}

QString closedText() {
    return QStringLiteral("Сервер закрыл соединение");
}

qint64 statusOf(const QNetworkReply* reply) {
    return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toLongLong();
}

/// Qt means to send the request again when a reply begins before the upload has ended and the connection
/// closes later; the reply is whole when that close is what ends it.
bool isReplyUpToTheClose(const QNetworkReply* reply) {
    return statusOf(reply) != 0 && !reply->hasRawHeader("Content-Length") &&
           !reply->hasRawHeader("Transfer-Encoding");
}

/// Qt makes errors of statuses from 400 on as well; those are replies.
bool isTransportFailure(const QNetworkReply* reply) {
    switch (reply->error()) {
    case QNetworkReply::NoError:
        return false;
    case QNetworkReply::ContentReSendError: // these two it would send again, without asking for our policy
        return statusOf(reply) != 307 && statusOf(reply) != 308 && !isReplyUpToTheClose(reply);
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolFailure:
        return true;
    default:
        return statusOf(reply) < 400 || reply->error() < QNetworkReply::ProxyConnectionRefusedError;
    }
}

QString describeFailure(const QNetworkReply* reply) {
    switch (reply->error()) {
    case QNetworkReply::OperationCanceledError: // not by us: we don't listen any more when we abort
        return timedOutText();
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError: // Qt would have sent the request again
        return closedText();
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("Сервер не отвечает");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("Сервер не найден");
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return QStringLiteral("Нет соединения с сетью");
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("Не удалось установить защищённое соединение");
    default: // rarer, and in Qt's own words
        return reply->errorString();
    }
}

} // namespace

AsyncStream<OpenHttpReply> QtHttpExchange::begin(QNetworkReply* reply, MainLoop& loop,
                                                 std::chrono::milliseconds totalTimeout,
                                                 std::stop_token stop) {
    auto [stream, head] = AsyncStream<OpenHttpReply>::make();
    new QtHttpExchange(reply, std::move(head), loop, totalTimeout, std::move(stop));
    return std::move(stream);
}

QtHttpExchange::QtHttpExchange(QNetworkReply* reply, HeadProducer head, MainLoop& loop,
                               std::chrono::milliseconds totalTimeout, std::stop_token stop)
    : QObject(reply)
    , m_reply(reply)
    , m_head(std::move(head))
    , m_onStop(std::move(stop), [this] { abort(cancelledText()); }) {
    connect(reply, &QNetworkReply::metaDataChanged, this, &QtHttpExchange::onMetaDataChanged);
    connect(reply, &QNetworkReply::readyRead, this, &QtHttpExchange::onReadyRead);
    connect(reply, &QNetworkReply::finished, this, &QtHttpExchange::onFinished);
    if (totalTimeout.count() > 0)
        m_totalTimer = loop.after(totalTimeout, [this] { abort(timedOutText()); });
}

QtHttpExchange::~QtHttpExchange() {
    m_reply = nullptr; // half destroyed already
    fail(cancelledText());
}

QString QtHttpExchange::cancelledText() {
    return QCoreApplication::translate("QNetworkReply", "Operation canceled");
}

void QtHttpExchange::onMetaDataChanged() {
    if (m_head && statusOf(m_reply) != 0)
        yieldHead();
}

// Whoever gets a head or a piece may end the exchange with it, so m_reply tells after each whether to go on.

void QtHttpExchange::onReadyRead() {
    if (m_head)
        yieldHead();
    if (m_reply)
        yieldBody();
}

void QtHttpExchange::onFinished() {
    const bool failed = isTransportFailure(m_reply);
    const QString description = describeFailure(m_reply);
    if (m_head && !failed)
        yieldHead();
    if (m_reply && m_body)
        yieldBody();
    if (!m_reply)
        return;
    release();
    if (failed)
        fail(description);
    else
        std::exchange(m_body, std::nullopt)->finish();
}

void QtHttpExchange::yieldHead() {
    auto [stream, body] = AsyncStream<QByteArray>::make();
    m_onBodyDropped.emplace(body.stopToken(), [this] { abort(cancelledText()); });
    m_body.emplace(std::move(body));
    OpenHttpReply open{statusOf(m_reply), {}, std::move(stream)};
    for (const auto& [name, value] : m_reply->rawHeaderPairs())
        open.headers.append(name, value);
    std::exchange(m_head, std::nullopt)->yield(std::move(open));
}

void QtHttpExchange::yieldBody() {
    if (!m_reply->isOpen()) // closed by a timeout
        return;
    if (QByteArray piece = m_reply->readAll(); !piece.isEmpty())
        m_body->yield(std::move(piece));
}

void QtHttpExchange::abort(const QString& description) {
    if (!m_reply)
        return;
    QNetworkReply* reply = m_reply;
    release();
    reply->abort();
    fail(description);
}

void QtHttpExchange::release() {
    QNetworkReply* reply = std::exchange(m_reply, nullptr);
    reply->disconnect(this);
    reply->deleteLater();
    m_totalTimer.invalidate();
}

void QtHttpExchange::fail(const QString& description) {
    const std::exception_ptr failure = std::make_exception_ptr(TransportError(description));
    if (std::optional<HeadProducer> head = std::exchange(m_head, std::nullopt))
        head->fail(failure);
    if (std::optional<BodyProducer> body = std::exchange(m_body, std::nullopt))
        body->fail(failure);
}

} // namespace velmora
