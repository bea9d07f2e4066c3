#pragma once

#include "backend/http_message.h"
#include "backend/transport_error.h"
#include "foundation/main_loop.h"

#include <QObject>

class QNetworkReply;

namespace velmora {

/// One request under way: passes on what its QNetworkReply tells, in the turn of the event loop in which it
/// tells it. Lives and dies with that reply.
class QtHttpExchange final : public QObject {
    Q_OBJECT

public:
    /// Takes over the reply, which goes when the exchange is over. The stream yields the one OpenHttpReply or
    /// fails.
    [[nodiscard]] static AsyncStream<OpenHttpReply>
    begin(QNetworkReply* reply, MainLoop& loop, std::chrono::milliseconds totalTimeout, std::stop_token stop);
    ~QtHttpExchange() override;

    [[nodiscard]] static QString cancelledText();

private:
    using HeadProducer = AsyncStream<OpenHttpReply>::Producer;
    using BodyProducer = AsyncStream<QByteArray>::Producer;
    using OnStop = std::stop_callback<std::function<void()>>;

    QtHttpExchange(QNetworkReply* reply, HeadProducer head, MainLoop& loop,
                   std::chrono::milliseconds totalTimeout, std::stop_token stop);

    void onMetaDataChanged();
    void onReadyRead();
    void onFinished();
    void yieldHead();
    void yieldBody();
    void abort(const QString& description);
    /// Leaves the reply; nothing more is passed on.
    void release();
    void fail(const QString& description);

    QNetworkReply* m_reply;             // null when it is over
    std::optional<HeadProducer> m_head; // until it is yielded
    std::optional<BodyProducer> m_body; // from then on
    Timer m_totalTimer;
    std::optional<OnStop> m_onBodyDropped;
    OnStop m_onStop;
};

} // namespace velmora
