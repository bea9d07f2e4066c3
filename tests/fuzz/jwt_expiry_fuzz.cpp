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
    const bool hasExpiry = expiry.isDouble() && size > 0;
    const std::optional<double> found = jwtExpiry(QString::fromLatin1("h." + payload + ".s"));
    fuzz::require(found.has_value() == hasExpiry && found.value_or(0) == (hasExpiry ? expiry.toDouble() : 0),
                  "the expiry is the payload's");
    return 0;
}
