#pragma once

#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_paste_queue.h"
#include "platform/linux/x11_selection_reader.h"

#include <gtest/gtest.h>

namespace velmora::test {

/// A paste queue on the desktop of the test, used as the injector uses it, and other programs around it.
class PasteDesktop : public testing::Test {
protected:
    PasteDesktop();

    /// Another program copies; it answers for its text until somebody else copies.
    static void copyInAnotherProgram(const QString& text, const char* target = "UTF8_STRING",
                                     const char* selection = "clipboard");
    /// What another program gets when it pastes; empty when there is no such target.
    [[nodiscard]] static QString readInAnotherProgram(const char* target = "UTF8_STRING");

    /// What the injector does for each piece of a dictation that is streaming in.
    void paste(const QString& piece);
    /// Pastes "раз1 ", "раз2 " … without a pause, and returns all of it.
    QString pasteNumberedPieces(int count);
    void putBack(const std::optional<QString>& text);
    /// Until the clipboard holds the text; as the put-back comes last, all pieces are through then.
    [[nodiscard]] bool waitForClipboard(const std::optional<QString>& text);

    QtMainLoop m_loop;
    std::unique_ptr<X11PasteQueue> m_queue = X11PasteQueue::open(m_loop, {});
    X11SelectionReader m_reader;
};

} // namespace velmora::test
