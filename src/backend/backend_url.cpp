#include "backend/backend_url.h"

#include "foundation/log.h"

#include <cstdlib>

namespace velmora {

QString backendURLText(const InfoDictionary& info) {
    return info.string(QStringLiteral("VelmorBackendURL"))
        .value_or(QStringLiteral("https://api.velmora.app"));
}

QUrl backendURL(const InfoDictionary& info) {
    const QString text = backendURLText(info);
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid()) {
        log(QStringLiteral("VelmorBackendURL is not a valid URL: ") + text);
        std::exit(EXIT_FAILURE);
    }
    return url;
}

QString landingURL(const InfoDictionary& info) {
    return info.string(QStringLiteral("VelmorLandingURL")).value_or(QStringLiteral("https://velmora.app"));
}

QUrl appendingPathComponent(const QUrl& base, const QString& path) {
    QUrl url = base.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment);
    QString whole = url.path(QUrl::FullyDecoded);
    if (!whole.endsWith(QLatin1Char('/')))
        whole += QLatin1Char('/');
    url.setPath(whole + path, QUrl::DecodedMode);
    return url;
}

} // namespace velmora
