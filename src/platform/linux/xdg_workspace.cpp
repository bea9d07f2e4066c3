#include "platform/linux/xdg_workspace.h"

#include <QProcess>

namespace velmora {

bool XdgWorkspace::openURL(const QUrl& url) {
    if (!url.isValid() || url.scheme().isEmpty())
        return false;
    return QProcess::startDetached(QStringLiteral("xdg-open"), {url.toString(QUrl::FullyEncoded)});
}

} // namespace velmora
