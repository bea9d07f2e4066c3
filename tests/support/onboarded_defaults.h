#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velmora::test {

/// The file of user defaults of somebody who has the first run behind them, with `more` set as well.
inline QByteArray onboardedDefaults(const QByteArray& more = "{}") {
    QJsonObject values = QJsonDocument::fromJson(more).object();
    values.insert(QStringLiteral("velmora.migratedToSaaS"), true);
    values.insert(QStringLiteral("hasOnboarded"), true);
    return QJsonDocument(values).toJson();
}

} // namespace velmora::test
