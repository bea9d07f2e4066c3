#include "support/desktop/default_browser.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace velmora::test {

void makeDefaultBrowser(const QString& program) {
    const QString entry = QStringLiteral("test-browser.desktop");
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                      QStringLiteral("/applications"));
    folder.mkpath(QStringLiteral("."));
    QFile file(folder.filePath(entry));
    if (file.open(QIODevice::WriteOnly))
        file.write("[Desktop Entry]\nType=Application\nName=Browser\nExec=" + program.toUtf8() + " %u\n");
    file.close();
    QProcess::execute(QStringLiteral("xdg-mime"),
                      {QStringLiteral("default"), entry, QStringLiteral("x-scheme-handler/http")});
}

} // namespace velmora::test
