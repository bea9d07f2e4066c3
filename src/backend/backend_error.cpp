#include "backend/backend_error.h"

#include "backend/backend_coder.h"

namespace velmora {

BackendError::BackendError(qint64 newStatus, QString newCode, QString newMessage,
                           std::optional<QMap<QString, AnyCodable>> newDetails)
    : status(newStatus)
    , code(std::move(newCode))
    , message(std::move(newMessage))
    , details(std::move(newDetails)) {}

BackendError BackendError::notLoggedIn() {
    return {401, QStringLiteral("not_logged_in"), QStringLiteral("Не авторизован")};
}

BackendError BackendError::badURL(const QString& path) {
    return {0, QStringLiteral("bad_url"), QStringLiteral("Некорректный URL запроса: ") + path};
}

BackendError BackendError::transportError() {
    return {0, QStringLiteral("transport_error"), QStringLiteral("Нет ответа от сервера")};
}

BackendError BackendError::sessionExpired() {
    return {401, QStringLiteral("session_expired"), QStringLiteral("Сессия истекла")};
}

BackendError BackendError::refreshFailed(qint64 status) {
    return {status, QStringLiteral("refresh_failed"), QStringLiteral("Не удалось обновить сессию")};
}

std::optional<BackendErrorBody> BackendErrorBody::parse(const QByteArray& bytes) {
    try {
        return backendCoder.decode<BackendErrorBody>(bytes);
    } catch (const json::DecodingError&) {
        return std::nullopt;
    }
}

QString httpStatusMessage(qint64 status) {
    return QStringLiteral("HTTP %1").arg(status);
}

void throwIfNotOk(qint64 status, const QByteArray& bytes) {
    if (status >= 200 && status <= 299)
        return;
    const BackendErrorBody body = BackendErrorBody::parse(bytes).value_or(BackendErrorBody());
    throw BackendError(status, body.code.value_or(QStringLiteral("http_error")),
                       body.message.value_or(httpStatusMessage(status)), body.details);
}

} // namespace velmora
