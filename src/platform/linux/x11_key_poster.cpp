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

std::optional<X11KeyPoster::Target> X11KeyPoster::focusedTarget() {
    xcb_connection_t* x = m_connection.get();
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == m_connection.root())
        return std::nullopt;
    // A window manager keeps the focus itself while no window is to have it.
    const xcb_window_t manager = m_connection.property32(
        m_connection.root(), m_connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    const uint32_t client = m_connection.clientOf(focus->focus);
    if (manager != XCB_WINDOW_NONE && m_connection.clientOf(manager) == client)
        return std::nullopt;
    return Target{client, isTerminal(focus->focus)};
}

bool X11KeyPoster::isTerminal(xcb_window_t window) {
    const auto found = findWindowClass(m_connection, window);
    return found &&
           (m_terminals.contains(found->name.toLower()) || m_terminals.contains(found->instance.toLower()));
}

void X11KeyPoster::postPasteChord(const Target& target) {
    const auto keys = findPasteKeys(m_connection, target.isTerminal);
    if (!keys)
        return;
    const X11InjectionGuard guard;
    postChord(m_connection, keys->modifier, keys->key);
}

} // namespace velmora
