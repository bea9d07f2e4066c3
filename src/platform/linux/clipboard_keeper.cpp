#include "platform/linux/clipboard_keeper.h"

#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_selection_owner.h"

#include <QEventLoop>

namespace velmora {

bool keepClipboard(const ClipboardContents& contents) {
    QtMainLoop loop;
    X11Connection connection;
    if (!connection.isOpen())
        return false;
    X11SelectionTransfers transfers(connection, loop);
    X11SelectionOwner clipboard(connection, transfers, "CLIPBOARD");
    if (clipboard.offer(contents) == 0)
        return false;
    QEventLoop events;
    connection.listen([&] {
        while (const XcbEvent event = connection.nextEvent()) {
            clipboard.handle(*event);
            transfers.handle(*event);
        }
        if (!connection.isOpen() || !clipboard.owns())
            events.quit();
    });
    events.exec();
    return true;
}

} // namespace velmora
