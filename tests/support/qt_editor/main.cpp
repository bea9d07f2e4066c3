// An editor that keeps its text in a file:  qt_editor FILE [PIECE…]
// Pieces are pasted by the editor itself, once it has the focus, as a program with a paste queue does in its
// own windows.
#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_paste_queue.h"

#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QSaveFile>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QPlainTextEdit editor;
    QObject::connect(&editor, &QPlainTextEdit::textChanged, &editor, [&] {
        QSaveFile file(arguments.value(1));
        if (file.open(QIODevice::WriteOnly) && file.write(editor.toPlainText().toUtf8()) >= 0)
            file.commit();
    });

    velmora::QtMainLoop loop;
    const auto queue = arguments.size() > 2 ? velmora::X11PasteQueue::open(loop, {}) : nullptr;
    QStringList pieces = arguments.mid(2);
    QObject::connect(qGuiApp, &QGuiApplication::focusObjectChanged, &editor, [&](const QObject* object) {
        if (!queue || object != &editor)
            return;
        for (const QString& piece : std::exchange(pieces, {})) {
            queue->clearContents();
            queue->setString(piece);
            queue->postPasteChord();
        }
    });
    editor.show();
    return QApplication::exec();
}
