#include "paste_desktop.h"

#include "platform/linux/start_clipboard_keeper.h"
#include "support/desktop/wait_until.h"

#include <QProcess>

namespace velmora::test {

using namespace std::chrono_literals;

PasteDesktop::PasteDesktop() {
    if (m_queue)
        m_queue->onUndelivered([this](const QString& text) { m_undelivered << text; });
    X11Connection x;
    xcb_set_selection_owner(x.get(), XCB_WINDOW_NONE, x.atom("CLIPBOARD"), XCB_CURRENT_TIME);
    x.flush();
    [[maybe_unused]] const xcb_window_t sync = x.ownerOf(x.atom("CLIPBOARD"));
}

void PasteDesktop::copyInAnotherProgram(const QString& text, const char* target, const char* selection) {
    X11Connection x;
    const xcb_atom_t atom = x.atom(QByteArray(selection).toUpper());
    const xcb_window_t before = x.ownerOf(atom);
    QProcess xclip;
    xclip.setStandardOutputFile(QProcess::nullDevice());
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-i"), QStringLiteral("-selection"), QLatin1String(selection),
                 QStringLiteral("-t"), QLatin1String(target)});
    xclip.write(text.toUtf8());
    xclip.closeWriteChannel();
    ASSERT_TRUE(xclip.waitForFinished());
    // What goes on as xclip in the background may not have got that far.
    waitUntil([&] { return x.ownerOf(atom) != before; }, 1s);
}

void PasteDesktop::copyInAnotherProgram(const ClipboardContents& contents) {
    X11Connection x;
    const xcb_atom_t clipboard = x.atom("CLIPBOARD");
    const xcb_window_t before = x.ownerOf(clipboard);
    startClipboardKeeper(QStringLiteral(CLIPBOARD_KEEPER), contents);
    ASSERT_TRUE(waitUntil([&] {
        const xcb_window_t owner = x.ownerOf(clipboard);
        return owner != before && owner != XCB_WINDOW_NONE;
    }));
}

QByteArray PasteDesktop::readInAnotherProgram(const char* target) {
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                 QStringLiteral("-t"), QLatin1String(target)});
    waitUntil([&] { return xclip.state() == QProcess::NotRunning; });
    return xclip.readAllStandardOutput();
}

void PasteDesktop::paste(const QString& piece) {
    m_queue->clearContents();
    m_queue->setString(piece);
    m_queue->postPasteChord();
}

QString PasteDesktop::pasteNumberedPieces(int count) {
    QString all;
    for (int number = 1; number <= count; ++number)
        all += pasteNumberedPiece(number);
    return all;
}

QString PasteDesktop::pasteNumberedPieces(int count, MainLoop::Duration interval) {
    QString all;
    int number = 0;
    const Timer pieces = m_loop.every(interval, [&] {
        if (number < count)
            all += pasteNumberedPiece(++number);
    });
    waitUntil([&] { return number == count; }, 60s);
    return all;
}

QString PasteDesktop::pasteNumberedPiece(int number) {
    const QString piece = QStringLiteral("раз%1 ").arg(number);
    paste(piece);
    return piece;
}

void PasteDesktop::borrow() {
    FocusedWindow window(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(window.takeFocus());
    const auto kept = m_queue->save();
    paste(QStringLiteral("кусок"));
    m_queue->putBack(kept);
    ASSERT_TRUE(waitUntil([&] { return window.text() == QStringLiteral("кусок"); }));
}

void PasteDesktop::write(const std::optional<QString>& text) {
    m_queue->clearContents();
    if (text)
        m_queue->setString(*text);
}

void PasteDesktop::settle() {
    constexpr auto mark = "конец";
    write(QString::fromUtf8(mark));
    ASSERT_TRUE(waitForClipboard(QString::fromUtf8(mark)));
}

bool PasteDesktop::waitForClipboard(const std::optional<QString>& text) {
    return waitUntil([&] { return m_reader.read("CLIPBOARD") == text; }, 30s);
}

} // namespace velmora::test
