#include "backend/auth_callback.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QUrl>

namespace velmora {
namespace {

QString percentDecoded(QStringView text) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString decoded = utf8(QByteArray::fromPercentEncoding(text.toUtf8()));
    return utf8.hasError() ? QString() : decoded;
}

/// The host as it was written: QUrl lower-cases its own.
QString hostOf(const QString& url) {
    static const QRegularExpression form(
        QStringLiteral(R"(\A[^:/?#]*://(?:[^/?#]*@)?(\[[^\]]*\]|[^:/?#]*))"));
    return form.match(url).captured(1);
}

} // namespace

AuthCallback parseAuthCallback(const QString& text) {
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid())
        return {};
    AuthCallback callback;
    callback.scheme = text.left(url.scheme().size());
    callback.host = hostOf(text);
    const QString query = url.query(QUrl::FullyEncoded);
    for (const QStringView item : QStringView(query).split(u'&', Qt::SkipEmptyParts)) {
        const qsizetype mark = item.indexOf(u'=');
        const QString name = percentDecoded(mark < 0 ? item : item.first(mark));
        callback.items.insert(name, mark < 0 ? QString() : percentDecoded(item.sliced(mark + 1)));
    }
    return callback;
}

} // namespace velmora
