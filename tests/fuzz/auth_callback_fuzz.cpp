// Any text may come as a callback URL.

#include "backend/auth_callback.h"
#include "fuzz.h"

#include <QUrl>

using namespace velmora;

namespace {

void requireAsWritten(const QString& part, const QString& normalised, const QString& text) {
    fuzz::require(text.contains(part), "scheme and host stand as written");
    const bool plain = std::ranges::all_of(part, [](QChar c) { return c.isLetterOrNumber() && c < u'\x80'; });
    // A host of digits alone is an IPv4 address to QUrl.
    if (plain && std::ranges::any_of(part, [](QChar c) { return c.isLetter(); }))
        fuzz::require(normalised.contains(QLatin1Char('.')) || part.toLower() == normalised,
                      "they are QUrl's but for the case");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const AuthCallback callback = parseAuthCallback(text);
    const QUrl url(text, QUrl::StrictMode);
    if (url.isValid()) {
        requireAsWritten(callback.scheme, url.scheme(), text);
        requireAsWritten(callback.host, url.host(), text);
    } else {
        fuzz::require(callback == AuthCallback(), "what is no URL is empty");
    }

    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(text));
    const AuthCallback made =
        parseAuthCallback(QStringLiteral("velmora://auth?state=1&token=%1&state=%1").arg(encoded));
    fuzz::require(made.scheme == QLatin1String("velmora") && made.host == QLatin1String("auth"), "route");
    fuzz::require(made.item(QStringLiteral("token")) == text, "an encoded value comes back");
    fuzz::require(made.item(QStringLiteral("state")) == text, "the last of a name wins");
    return 0;
}
