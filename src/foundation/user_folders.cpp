#include "foundation/user_folders.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmora {

QString applicationSupportFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Velmora");
}

QString defaultsPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Velmora/defaults.json");
}

namespace {

QString besideOrUnder(const QString& folder, const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString beside = program + QLatin1Char('/') + name;
    return QFileInfo::exists(beside) ? beside : program + folder + name;
}

} // namespace

QString resourcePath(const QString& name) {
    return besideOrUnder(QStringLiteral("/../share/velmora/"), name);
}

QString helperPath(const QString& name) {
    return besideOrUnder(QStringLiteral("/../libexec/velmora/"), name);
}

} // namespace velmora
