#pragma once

#include <QString>

namespace velmora::bench {

/// An access token that doesn't end before the century does.
[[nodiscard]] inline QString lastingToken() {
    const QByteArray claims = QByteArray(R"({"exp":4102444800})").toBase64(QByteArray::Base64UrlEncoding);
    return QStringLiteral("e30.%1.c2ln").arg(QString::fromLatin1(claims));
}

} // namespace velmora::bench
