#include "platform/linux/x11_key_poster.h"

#include "platform/linux/x11_chord_post.h"
#include "platform/linux/x11_injection_guard.h"
#include "platform/linux/x11_keyboards.h"
#include "platform/linux/x11_paste_keys.h"
#include "platform/linux/x11_window_class.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace velmora {
namespace {

// WM_CLASS names, in small letters.
constexpr const char* knownTerminals =
    "alacritty aterm com.mitchellh.ghostty contour cool-retro-term deepin-terminal eterm foot "
    "footclient ghostty gnome-terminal gnome-terminal-server guake hyper io.elementary.terminal kgx "
    "kitty konsole lilyterm lxterminal mate-terminal mlterm org.gnome.console org.gnome.ptyxis "
    "org.gnome.terminal org.kde.konsole org.wezfurlong.wezterm ptyxis qterminal rio roxterm rxvt "
    "sakura st st-256color stterm terminator terminology termit tilda tilix urxvt uxterm wezterm "
    "wezterm-gui xfce4-terminal xterm yakuake zutty";

} // namespace

X11KeyPoster::X11KeyPoster(X11Connection& connection, const QStringList& moreTerminals)
    : m_connection(connection)
    , m_terminals(QString::fromLatin1(knownTerminals).split(QLatin1Char(' '))) {
    for (const QString& name : moreTerminals)
        m_terminals << name.toLower();

    xkb_x11_setup_xkb_extension(connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION,
                                XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr,
                                nullptr, nullptr, nullptr);
    [[maybe_unused]] const bool seesKeyboards = setUpInputExtension(connection); // without, none is held
}

std::optional<PasteTarget> X11KeyPoster::focusedTarget() {
    const xcb_window_t focus = focusedWindow();
    if (focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus == m_connection.root())
        return std::nullopt;
    // A window manager keeps the focus itself while no window is to have it.
    const xcb_window_t manager = m_connection.property32(
        m_connection.root(), m_connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    const uint32_t client = m_connection.clientOf(focus);
    if (manager != XCB_WINDOW_NONE && m_connection.clientOf(manager) == client)
        return std::nullopt;
    return PasteTarget{topLevelOf(focus), client, isTerminal(focus)};
}

xcb_window_t X11KeyPoster::focusedWindow() {
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    return focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
}

// The one that the window manager knows, around the window; without a window manager the outermost.
xcb_window_t X11KeyPoster::topLevelOf(xcb_window_t window) {
    const xcb_atom_t state = m_connection.atom("WM_STATE");
    while (m_connection.property(window, state).isEmpty()) {
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), window), nullptr));
        if (!tree || tree->parent == m_connection.root() || tree->parent == XCB_WINDOW_NONE)
            break;
        window = tree->parent;
    }
    return window;
}

bool X11KeyPoster::isTerminal(xcb_window_t window) {
    const auto found = findWindowClass(m_connection, window);
    return found &&
           (m_terminals.contains(found->name.toLower()) || m_terminals.contains(found->instance.toLower()));
}

bool X11KeyPoster::postPasteChord(const PasteTarget& target) {
    const auto keys = findPasteKeys(m_connection, target.isTerminal);
    if (!keys)
        return false;
    // Nobody can move the focus while the server is grabbed: the keys reach the target or nobody.
    xcb_grab_server(m_connection.get());
    const bool hasFocus = topLevelOf(focusedWindow()) == target.window;
    if (hasFocus) {
        const X11InjectionGuard guard;
        postChord(m_connection, keys->modifier, keys->key); // which lets go of the server
    } else {
        xcb_ungrab_server(m_connection.get());
    }
    m_connection.flush();
    return hasFocus;
}

} // namespace velmora
