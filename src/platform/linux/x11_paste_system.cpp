#include "platform/linux/x11_paste_system.h"

#include <xcb/xfixes.h>
#include <xcb/xtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto handOverPatience = 500ms;
constexpr auto keeperPatience = 2s;

} // namespace

X11PasteSystem::X11PasteSystem(MainLoop& loop, const QByteArray& display, const QStringList& moreTerminals)
    : m_connection(display)
    , m_loop(loop)
    , m_transfers(m_connection, loop)
    , m_clipboard(m_connection, m_transfers, "CLIPBOARD")
    , m_primary(m_connection, m_transfers, "PRIMARY")
    , m_poster(m_connection, moreTerminals)
    , m_line(loop, *this) {
    if (!isUsable())
        return;
    for (X11SelectionOwner* owner : {&m_clipboard, &m_primary}) {
        owner->onAnswered([this, owner](const X11SelectionOwner::Question& question) {
            m_line.answered(question.client, numberOf(*owner, question.offer), question.forText);
        });
        owner->onTaken([this, owner](const X11SelectionOwner::Question& question) {
            m_line.taken(question.client, numberOf(*owner, question.offer));
        });
    }
    m_line.onIdle([this] {
        listenForPongs(false);
        m_whenIdle();
    });
    xcb_connection_t* x = m_connection.get();
    const XcbReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x, xcb_xfixes_query_version(x, 1, 0), nullptr));
    m_fixesEvent = xcb_get_extension_data(x, &xcb_xfixes_id)->first_event;
    xcb_xfixes_select_selection_input(x, m_clipboard.window(), m_clipboard.selection(),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    m_connection.listen([this] { dispatch(); });
}

// Both selections together hold what was put up. What is read of an earlier offer is no sign for the last
// one.
quint64 X11PasteSystem::numberOf(const X11SelectionOwner& owner, quint64 offer) const {
    return owner.owns() && owner.current().number == offer ? m_lastPutUp : 0;
}

bool X11PasteSystem::canWorkWith(const X11Connection& connection) {
    return connection.isOpen() && connection.hasExtension(&xcb_test_id) &&
           connection.hasExtension(&xcb_xfixes_id);
}

void X11PasteSystem::dispatch() {
    while (const XcbEvent event = m_connection.nextEvent())
        handle(*event);
}

void X11PasteSystem::handle(const xcb_generic_event_t& event) {
    m_clipboard.handle(event);
    m_primary.handle(event);
    m_transfers.handle(event);
    for (std::size_t at = 0; at < m_fetches.size(); ++at) { // one that ends may begin another
        if (const auto fetch = m_fetches[at].lock())
            fetch->handle(event);
    }
    std::erase_if(m_fetches, [](const auto& fetch) { return fetch.expired(); });
    if (typeOf(event) == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.window == m_connection.root() && message.type == m_connection.atom("WM_PROTOCOLS") &&
            message.data.data32[0] == m_connection.atom("_NET_WM_PING") &&
            message.data.data32[1] == m_lastPing)
            m_line.ponged(message.data.data32[2]);
    }
    if (typeOf(event) == m_fixesEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (notify.owner != XCB_WINDOW_NONE && notify.owner != m_clipboard.window())
            m_line.copiedElsewhere();
    }
}

std::optional<PasteTarget> X11PasteSystem::focused() {
    return m_poster.focusedTarget();
}

quint64 X11PasteSystem::putUp(const QByteArray& text, const PasteTarget& target) {
    const ClipboardContents piece = ClipboardContents::ofPiece(text);
    const auto client = static_cast<uint32_t>(target.client);
    const auto window = static_cast<xcb_window_t>(target.window);
    m_targetAnswersPings = containsAtom(m_connection.property(window, m_connection.atom("WM_PROTOCOLS")),
                                        m_connection.atom("_NET_WM_PING"));
    listenForPongs(true);
    m_clipboard.offer(piece, client);
    if (target.isTerminal) {
        if (!m_primaryOfUser)
            m_primaryOfUser =
                m_primary.isOwnerNow()
                    ? std::make_shared<FetchedClipboard>(FetchedClipboard{m_primary.current().contents, true})
                    : fetch(m_primary.selection(), [] {});
        m_primary.offer(piece, client);
    }
    return ++m_lastPutUp;
}

bool X11PasteSystem::postChord(const PasteTarget& target) {
    return m_poster.postPasteChord(target);
}

bool X11PasteSystem::answersPings(const PasteTarget& /*target*/) {
    return m_targetAnswersPings;
}

void X11PasteSystem::ping(const PasteTarget& target) {
    const auto window = static_cast<xcb_window_t>(target.window);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_connection.atom("WM_PROTOCOLS");
    message.data.data32[0] = m_connection.atom("_NET_WM_PING");
    message.data.data32[1] = ++m_lastPing; // comes back as it is
    message.data.data32[2] = window;
    xcb_send_event(m_connection.get(), false, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
}

// They go to the root window, with news of every window that comes, goes or moves.
void X11PasteSystem::listenForPongs(bool listen) {
    if (std::exchange(m_listensForPongs, listen) == listen)
        return;
    const uint32_t mask = listen ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_connection.get(), m_connection.root(), XCB_CW_EVENT_MASK, &mask);
}

void X11PasteSystem::offer(const ClipboardContents& contents) {
    if (contents.isEmpty())
        m_clipboard.clear();
    else
        m_clipboard.offer(contents);
}

void X11PasteSystem::giveBackTheRest() {
    const auto ofUser = std::exchange(m_primaryOfUser, std::nullopt);
    if (!ofUser || !m_primary.isOwnerNow())
        return;
    if (*ofUser && !(*ofUser)->contents.isEmpty())
        m_primary.offer((*ofUser)->contents);
    else
        m_primary.clear();
}

bool X11PasteSystem::ownsClipboard() {
    return m_clipboard.isOwnerNow();
}

std::shared_ptr<const FetchedClipboard> X11PasteSystem::fetch(std::function<void()> done) {
    return fetch(m_clipboard.selection(), std::move(done));
}

std::shared_ptr<const FetchedClipboard> X11PasteSystem::fetch(xcb_atom_t selection,
                                                              std::function<void()> done) {
    if (m_connection.ownerOf(selection) == XCB_WINDOW_NONE)
        return nullptr;
    const auto fetch = std::make_shared<X11ClipboardFetch>(m_connection, m_loop, selection, std::move(done));
    m_fetches.push_back(fetch);
    return {fetch, &fetch->result()};
}

void X11PasteSystem::whenIdle(std::function<void()> call) {
    m_whenIdle = std::move(call);
    if (m_line.isIdle())
        m_whenIdle();
}

void X11PasteSystem::leave(const std::function<void(const ClipboardContents&)>& keep) {
    const auto contents = m_line.whatToLeave();
    if (!contents)
        return;
    offer(*contents);
    giveBackTheRest();
    if (contents->isEmpty() || handOver())
        return;
    keep(*contents);
    while (m_clipboard.owns()) {
        const XcbEvent event = m_connection.waitForEvent(keeperPatience);
        if (!event)
            return;
        handle(*event);
    }
}

bool X11PasteSystem::handOver() {
    const xcb_atom_t manager = m_connection.atom("CLIPBOARD_MANAGER");
    if (m_connection.ownerOf(manager) == XCB_WINDOW_NONE || m_clipboard.current().contents.secret)
        return false;
    const xcb_atom_t property = m_connection.atom("VELMORA_SAVE");
    const std::vector<uint32_t> targets = m_clipboard.formTargets();
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_clipboard.window(), property,
                        XCB_ATOM_ATOM, 32, static_cast<uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(m_connection.get(), m_clipboard.window(), manager,
                          m_connection.atom("SAVE_TARGETS"), property,
                          m_connection.serverTime(m_clipboard.window()));
    while (const XcbEvent event = m_connection.waitForEvent(handOverPatience)) {
        if (typeOf(*event) == XCB_SELECTION_NOTIFY)
            return reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != XCB_ATOM_NONE;
        handle(*event);
    }
    return false;
}

} // namespace velmora
