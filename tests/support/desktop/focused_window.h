#pragma once

#include "platform/linux/x11_connection.h"

#include <QString>

namespace velmora::test {

/// A window of this thread that gets the keyboard focus. It pastes when it is told to be one that does.
class FocusedWindow {
public:
    enum class Kind { Deaf, Pasting };

    explicit FocusedWindow(Kind kind);
    ~FocusedWindow();
    FocusedWindow(const FocusedWindow&) = delete;
    FocusedWindow& operator=(const FocusedWindow&) = delete;

    /// Waits until it is there and has the focus, which it takes if it was another's.
    bool takeFocus();
    void close();
    /// What it has pasted so far.
    [[nodiscard]] QString text() const { return QString::fromUtf8(m_text); }
    /// How often the paste chord has come.
    [[nodiscard]] int chords() const { return m_chords; }

private:
    void handle(const xcb_generic_event_t& event);

    const Kind m_kind;
    X11Connection m_x;
    xcb_window_t m_window;
    QByteArray m_text;
    int m_chords = 0;
};

} // namespace velmora::test
