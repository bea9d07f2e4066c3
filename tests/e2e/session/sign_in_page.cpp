#include "e2e/session/sign_in_page.h"

#include "support/desktop/wait_until.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QUrlQuery>

#include <pwd.h>
#include <unistd.h>

namespace velmora::test {
namespace {

QString bodyOf(QNetworkReply* reply) {
    waitUntil([reply] { return reply->isFinished(); });
    return QString::fromUtf8(reply->readAll());
}

QString fieldOf(const QString& page, const char* name) {
    const QRegularExpression field(
        QStringLiteral(R"re(name="%1" value="([^"]*)")re").arg(QLatin1String(name)));
    return field.match(page).captured(1);
}

} // namespace

QString createAccount(const QString& url, const QString& email, const QString& password) {
    QNetworkAccessManager network;
    const QUrl address(url, QUrl::StrictMode);
    const QString page = bodyOf(network.get(QNetworkRequest(address)));
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("action"), QStringLiteral("create"));
    form.addQueryItem(QStringLiteral("state"), fieldOf(page, "state"));
    form.addQueryItem(QStringLiteral("form_token"), fieldOf(page, "form_token"));
    form.addQueryItem(QStringLiteral("email"), email);
    form.addQueryItem(QStringLiteral("password"), password);
    QNetworkRequest request(address.adjusted(QUrl::RemoveQuery));
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/x-www-form-urlencoded"));
    const QString answer = bodyOf(network.post(request, form.toString(QUrl::FullyEncoded).toUtf8()));
    QString link =
        QRegularExpression(QStringLiteral(R"re(href="(velmora:[^"]*)")re")).match(answer).captured(1);
    return link.replace(QLatin1String("&amp;"), QLatin1String("&"));
}

QString continueAsOwnUser() {
    const passwd* entry = getpwuid(getuid());
    const QString fullName = QString::fromUtf8(entry->pw_gecos).section(QLatin1Char(','), 0, 0);
    return QStringLiteral("Продолжить как ") +
           (fullName.isEmpty() ? QString::fromUtf8(entry->pw_name) : fullName);
}

} // namespace velmora::test
