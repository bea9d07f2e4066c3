#include "backend/auth_callback.h"

#include <QStringDecoder>
#include <QUrl>

namespace velmora {
namespace {

QString percentDecoded(QStringView text) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString decoded = utf8(QByteArray::fromPercentEncoding(text.toUtf8()));
    return utf8.hasError() ? QString() : decoded;
}

/// QUrl lower-cases scheme and host; this gives back how `part` was written from `from` on.
QString asWritten(const QString& url, const QString& part, qsizetype from = 0) {
    const qsizetype start = url.indexOf(part, from, Qt::CaseInsensitive);
    return start < 0 ? part : url.mid(start, part.size());
}

} // namespace

AuthCallback parseAuthCallback(const QString& text) {
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid())
        return {};
    AuthCallback callback;
    callback.scheme = asWritten(text, url.scheme());
    callback.host = asWritten(text, url.host(), url.scheme().size());
    const QString query = url.query(QUrl::FullyEncoded);
    for (const QStringView item : QStringView(query).split(u'&')) {
        const qsizetype mark = item.indexOf(u'=');
        const QString name = percentDecoded(mark < 0 ? item : item.first(mark));
        callback.items.insert(name, mark < 0 ? QString() : percentDecoded(item.sliced(mark + 1)));
    }
    return callback;
}

} // namespace velmora
