#include "foundation/json_coder.h"

#include <QJsonArray>

namespace velmora::json {

QJsonValue Coder::parse(const QByteArray& bytes) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw DecodingError(
            QStringLiteral("not JSON: %1 at offset %2").arg(error.errorString()).arg(error.offset));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QByteArray Coder::write(const QJsonValue& value, QJsonDocument::JsonFormat format) {
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return document.toJson(format);
}

} // namespace velmora::json
