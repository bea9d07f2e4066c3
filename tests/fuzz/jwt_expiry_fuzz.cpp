// Tokens come from a web page's callback and from the backend.

#include "backend/jwt_expiry.h"
#include "fuzz.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)jwtExpiry(QString::fromUtf8(bytes));
    (void)jwtExpiry(QStringLiteral("h.") + QString::fromLatin1(bytes) + QStringLiteral(".s"));

    const QByteArray payload = bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
    const QJsonValue expiry = QJsonDocument::fromJson(bytes).object().value(QLatin1String("exp"));
    const std::optional<double> expected =
        expiry.isDouble() && size > 0 ? std::optional(expiry.toDouble()) : std::nullopt;
    fuzz::require(jwtExpiry(QString::fromLatin1("h." + payload + ".s")) == expected,
                  "the expiry is the payload's");
    return 0;
}
