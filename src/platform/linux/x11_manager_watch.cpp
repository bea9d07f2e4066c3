#include "platform/linux/x11_manager_watch.h"

#include "platform/linux/x11_connection.h"

#include <xcb/xfixes.h>

namespace velmora {

X11ManagerWatch::X11ManagerWatch(QByteArray selection, const QByteArray& display, QObject* parent)
    : QObject(parent)
    , m_selection(std::move(selection))
    , m_connection(std::make_unique<X11Connection>(display)) {
    if (!m_connection->isOpen())
        return;
    watch();
    update();
}

X11ManagerWatch::~X11ManagerWatch() = default;

void X11ManagerWatch::watch() {
    X11Connection& x = *m_connection;
    if (!x.hasExtension(&xcb_xfixes_id))
        return;
    // The server wants to hear a version before anything else of the extension.
    const XcbReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x.get(), xcb_xfixes_query_version(x.get(), 1, 0), nullptr));
    xcb_xfixes_select_selection_input(x.get(), x.root(), x.atom(m_selection),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    x.listen([this] { update(); });
}

void X11ManagerWatch::update() {
    m_connection->discardEvents(); // of whatever kind: who is the owner now is what counts
    const quint32 owner = m_connection->ownerOf(m_connection->atom(m_selection));
    if (std::exchange(m_owner, owner) != owner)
        Q_EMIT changed();
}

} // namespace velmora
