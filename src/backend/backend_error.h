#pragma once

#include "backend/any_codable.h"
#include "foundation/error.h"

#include <QMap>

namespace velmora {

/// A failure of a request. Callers tell failures apart by `code` and `status`, never by the text.
class BackendError : public Error {
public:
    BackendError(qint64 status, QString code, QString message,
                 std::optional<QMap<QString, AnyCodable>> details = {});

    [[nodiscard]] static BackendError notLoggedIn();
    [[nodiscard]] static BackendError badURL(const QString& path);
    [[nodiscard]] static BackendError transportError();
    [[nodiscard]] static BackendError sessionExpired();
    [[nodiscard]] static BackendError refreshFailed(qint64 status);

    /// Exactly `message`.
    [[nodiscard]] QString localizedDescription() const override { return message; }

    qint64 status; ///< of the HTTP reply; 0 when there was no usable one
    QString code;
    QString message; ///< shown to the user as it stands
    std::optional<QMap<QString, AnyCodable>> details;
};

/// The body of an unsuccessful reply.
struct BackendErrorBody {
    std::optional<QString> code;
    std::optional<QString> message;
    std::optional<QMap<QString, AnyCodable>> details;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("code", &BackendErrorBody::code),
                          json::field("message", &BackendErrorBody::message),
                          json::field("details", &BackendErrorBody::details));
    }

    /// None when the bytes are no such body.
    [[nodiscard]] static std::optional<BackendErrorBody> parse(const QByteArray& bytes);
};

/// The message of a reply that doesn't bring one: "HTTP 502".
[[nodiscard]] QString httpStatusMessage(qint64 status);

/// Throws the BackendError of a reply whose status isn't 200 to 299.
void throwIfNotOk(qint64 status, const QByteArray& bytes);

} // namespace velmora
