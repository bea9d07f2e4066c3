#include "app/application.h"

#include "backend/backend_url.h"
#include "foundation/user_folders.h"
#include "platform/linux/no_desktop_paste.h"
#include "platform/linux/x11_paste_queue.h"
#include "platform/linux/x11_workspace.h"

#include <QStandardPaths>

namespace velmora {
namespace {

// The user's own runtime folder where there is one: recordings are nobody else's business.
QString recordingsFolder() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::TempLocation) : runtime;
}

} // namespace

} // namespace velmora
