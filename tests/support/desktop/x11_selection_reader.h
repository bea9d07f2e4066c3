#pragma once

#include "platform/linux/x11_connection.h"

#include <QString>

#include <optional>

namespace velmora::test {

/// Asks the owner of a selection for its text. Has a connection of its own, for it waits for the answer; an
/// owner that makes no progress for a moment (300 ms), or isn't through after 2 s, counts as one without
/// text.
class X11SelectionReader {
public:
    explicit X11SelectionReader(const QByteArray& display = {});

    /// None when nobody owns the selection, or its owner has no text or doesn't answer.
    [[nodiscard]] std::optional<QString> read(const QByteArray& selection);

private:
    enum class Outcome { Text, Refused, Silent };

    Outcome convert(xcb_window_t window, xcb_atom_t selection, xcb_atom_t target, QString& text);
    Outcome receiveIncrements(xcb_window_t window, QByteArray& bytes);
    bool takeProperty(xcb_window_t window, QByteArray& bytes, xcb_atom_t& type);
    template<typename Match>
    XcbEvent waitFor(Match matches);

    X11Connection m_connection;
    std::chrono::steady_clock::time_point m_deadline; // of the read under way
};

} // namespace velmora::test
