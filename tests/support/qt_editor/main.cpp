// An editor that keeps its text in the file it is started with.
#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QSaveFile>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QPlainTextEdit editor;
    QObject::connect(&editor, &QPlainTextEdit::textChanged, &editor, [&] {
        QSaveFile file(application.arguments().value(1));
        if (file.open(QIODevice::WriteOnly) && file.write(editor.toPlainText().toUtf8()) >= 0)
            file.commit();
    });
    editor.show();
    return application.exec();
}
