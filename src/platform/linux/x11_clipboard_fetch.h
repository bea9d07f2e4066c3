#pragma once

#include "foundation/main_loop.h"
#include "platform/clipboard_contents.h"
#include "platform/linux/x11_connection.h"

#include <functional>
#include <memory>
#include <vector>

namespace velmora {

/// Asks the owner of a selection for the forms that are worth keeping, the text first: an owner answers what
/// it was asked before it learns that it has lost the selection. Nobody waits for it.
///
/// After 1.5 s it is complete with the forms that have come; those that would make more than 16 MB in all are
/// left out.
class X11ClipboardFetch {
public:
    X11ClipboardFetch(X11Connection& connection, MainLoop& loop, xcb_atom_t selection,
                      std::function<void()> done);
    ~X11ClipboardFetch();
    X11ClipboardFetch(const X11ClipboardFetch&) = delete;
    X11ClipboardFetch& operator=(const X11ClipboardFetch&) = delete;

    [[nodiscard]] const FetchedClipboard& result() const { return m_result; }
    void handle(const xcb_generic_event_t& event);

private:
    enum class State { Asked, Incremental, Refused, Here };
    struct Answer {
        const char* name = nullptr;
        xcb_atom_t target = XCB_ATOM_NONE;
        xcb_window_t window = XCB_WINDOW_NONE; // some owners serve one transfer a window
        State state = State::Asked;
        xcb_atom_t type = XCB_ATOM_NONE;
        QByteArray bytes;
    };

    void ask(const char* name);
    void answered(const xcb_selection_notify_event_t& notify);
    void valueCame(const xcb_property_notify_event_t& notify);
    void take(Answer& answer);
    [[nodiscard]] bool isAcceptable(const Answer& answer);
    void goOn();
    [[nodiscard]] const char* nextForm();
    void finish();
    [[nodiscard]] const Answer* find(const char* name) const;
    [[nodiscard]] const Answer* text() const;
    [[nodiscard]] static QByteArray utf8Of(const Answer& answer);
    [[nodiscard]] bool isOffered(const char* name);

    X11Connection& m_connection;
    xcb_atom_t m_selection;
    xcb_window_t m_owner;
    xcb_atom_t m_property;
    std::function<void()> m_done;
    std::vector<Answer> m_answers; // the list of targets first
    FetchedClipboard m_result;
    qsizetype m_size = 0;
    Timer m_patience;
};

} // namespace velmora
