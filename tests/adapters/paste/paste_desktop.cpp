#include "paste_desktop.h"

#include "support/desktop/wait_until.h"

#include <QProcess>

namespace velmora::test {

using namespace std::chrono_literals;

PasteDesktop::PasteDesktop() {
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

QString PasteDesktop::readInAnotherProgram(const char* target) {
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                 QStringLiteral("-t"), QLatin1String(target)});
    waitUntil([&] { return xclip.state() == QProcess::NotRunning; });
    return QString::fromUtf8(xclip.readAllStandardOutput());
}

void PasteDesktop::paste(const QString& piece) {
    m_queue->clearContents();
    m_queue->setString(piece);
    m_queue->postPasteChord();
}

QString PasteDesktop::pasteNumberedPieces(int count) {
    QString all;
    for (int number = 1; number <= count; ++number) {
        const QString piece = QStringLiteral("раз%1 ").arg(number);
        paste(piece);
        all += piece;
    }
    return all;
}

void PasteDesktop::putBack(const std::optional<QString>& text) {
    m_queue->clearContents();
    if (text)
        m_queue->setString(*text);
}

bool PasteDesktop::waitForClipboard(const std::optional<QString>& text) {
    return waitUntil([&] { return m_reader.read("CLIPBOARD") == text; }, 30s);
}

} // namespace velmora::test
