#include "platform/linux/x11_compositing.h"

#include "platform/linux/x11_connection.h"

#include <QSocketNotifier>

#include <xcb/xfixes.h>

namespace velmora {
namespace {

constexpr const char* managerSelection = "_NET_WM_CM_S0";

} // namespace

X11Compositing::X11Compositing(const QByteArray& display, QObject* parent)
    : Compositing(parent)
    , m_connection(std::make_unique<X11Connection>(display)) {
    if (!m_connection->isOpen())
        return;
    watchManager();
    readEvents();
}

X11Compositing::~X11Compositing() = default;

void X11Compositing::watchManager() {
    X11Connection& x = *m_connection;
    if (!x.hasExtension(&xcb_xfixes_id))
        return;
    const XcbReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x.get(), xcb_xfixes_query_version(x.get(), 1, 0), nullptr));
    xcb_xfixes_select_selection_input(x.get(), x.root(), x.atom(managerSelection),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_notifier = std::make_unique<QSocketNotifier>(x.fileDescriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Compositing::readEvents);
}

void X11Compositing::readEvents() {
    do {
        while (m_connection->nextEvent()) { // of whatever kind: who is the owner now is what counts
        }
        update();
    } while (m_connection->hasWaitingEvents()); // some may have come in beside the answer
    if (m_notifier && !m_connection->isOpen())
        m_notifier->setEnabled(false); // it would stay readable for ever
}

void X11Compositing::update() {
    const bool active = m_connection->ownerOf(m_connection->atom(managerSelection)) != XCB_WINDOW_NONE;
    if (std::exchange(m_active, active) != active)
        Q_EMIT changed();
}

} // namespace velmora
