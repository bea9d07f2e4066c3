#pragma once

#include "foundation/qt_main_loop.h"
#include "platform/clipboard_contents.h"
#include "platform/linux/x11_paste_queue.h"
#include "support/desktop/focused_window.h"
#include "support/desktop/x11_selection_reader.h"

#include <gtest/gtest.h>

namespace velmora::test {

/// A paste queue on the desktop of the test, used as the injector uses it, and other programs around it.
class PasteDesktop : public testing::Test {
protected:
    PasteDesktop();

    /// Another program copies; it answers for its text until somebody else copies.
    static void copyInAnotherProgram(const QString& text, const char* target = "UTF8_STRING",
                                     const char* selection = "clipboard");
    /// The same in several forms.
    static void copyInAnotherProgram(const ClipboardContents& contents);
    /// What another program gets when it pastes; empty when there is no such target.
    [[nodiscard]] static QByteArray readInAnotherProgram(const char* target = "UTF8_STRING");

    /// What the injector does for each piece of a dictation that is streaming in.
    void paste(const QString& piece);
    /// Pastes "раз1 ", "раз2 " … without a pause, and returns all of it.
    QString pasteNumberedPieces(int count);
    /// The same at a pace.
    QString pasteNumberedPieces(int count, MainLoop::Duration interval);
    /// Keeps what is on the clipboard, pastes something into a window and puts back what was there.
    void borrow();
    /// Puts up a text for the user to keep, or clears the clipboard.
    void write(const std::optional<QString>& text);
    /// Until all pieces are through.
    void settle();
    /// Until the clipboard holds the text; what is put back comes after all pieces.
    [[nodiscard]] bool waitForClipboard(const std::optional<QString>& text);

    QtMainLoop m_loop;
    std::unique_ptr<X11PasteQueue> m_queue =
        X11PasteQueue::open(m_loop, {.keeper = QStringLiteral(CLIPBOARD_KEEPER)});
    X11SelectionReader m_reader;
    QStringList m_undelivered;

private:
    QString pasteNumberedPiece(int number);
};

} // namespace velmora::test
