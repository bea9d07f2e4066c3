#pragma once

#include "backend/dictate_service.h"
#include "backend/http_message.h"

namespace velmora {

class AuthSession;
class DictationForm;
class HttpTransport;
class MainLoop;
class Worker;

/// Posts a recording in one request and passes on the events of the reply as they arrive.
class BackendDictateClient final : public DictateService {
public:
    /// Dictations have a transport of their own, so that no other request holds one up. Files are read by
    /// `reader`.
    BackendDictateClient(HttpTransport& transport, AuthSession& session, MainLoop& loop, Worker& reader);

    /// The stream fails with BackendError, TransportError, DictateClientError, or the file's error.
    [[nodiscard]] AsyncStream<DictateEvent> dictate(QString audioFile,
                                                    QString mimeType = QStringLiteral("audio/m4a")) override;

private:
    using Producer = AsyncStream<DictateEvent>::Producer;

    Task<> run(Producer events, QString audioFile, QString mimeType);
    [[nodiscard]] HttpRequest buildRequest(const DictationForm& form) const;

    HttpTransport& m_transport;
    AuthSession& m_session;
    MainLoop& m_loop;
    Worker& m_reader;
    TaskScope m_scope;
};

/// The own message of an error body, or "HTTP " and the status.
[[nodiscard]] QString extractErrorMessage(const QByteArray& bytes, qint64 status);

} // namespace velmora
