#include "backend/jwt_expiry.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

namespace velmora {

std::optional<double> jwtExpiry(const QString& token) {
    const QStringList parts = token.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.size() != 3)
        return std::nullopt;
    QByteArray payload = parts[1].toUtf8();
    payload.replace('-', '+').replace('_', '/');
    while (payload.size() % 4 != 0)
        payload += '=';
    const auto decoded = QByteArray::fromBase64Encoding(payload, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    const QJsonValue expiry = QJsonDocument::fromJson(*decoded).object().value(QLatin1String("exp"));
    return expiry.isDouble() ? std::optional(expiry.toDouble()) : std::nullopt;
}

} // namespace velmora
