#pragma once

#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_selection_owner.h"

namespace velmora::test {

/// Another client of the X server, on this thread: it copies at once, and answers once it listens and this
/// thread runs its loop.
class CopyingClient {
public:
    explicit CopyingClient(const ClipboardContents& contents) { m_clipboard.offer(contents); }

    void listen() {
        m_x.listen([this] {
            while (const XcbEvent event = m_x.nextEvent()) {
                m_clipboard.handle(*event);
                m_transfers.handle(*event);
            }
        });
    }
    X11SelectionOwner& clipboard() { return m_clipboard; }

private:
    QtMainLoop m_loop;
    X11Connection m_x;
    X11SelectionTransfers m_transfers{m_x, m_loop};
    X11SelectionOwner m_clipboard{m_x, m_transfers, "CLIPBOARD"};
};

} // namespace velmora::test
