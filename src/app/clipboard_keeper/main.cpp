// velmora-clipboard-keeper: what Velmora has put on the clipboard stays there when Velmora is gone, on
// desktops without a clipboard manager. Reads it from standard input and ends when the user copies something
// else.
#include "platform/linux/clipboard_keeper.h"
#include "platform/linux/start_clipboard_keeper.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return EXIT_FAILURE;
    const auto contents = velmora::decodeClipboard(input.readAll());
    return contents && velmora::keepClipboard(*contents) ? EXIT_SUCCESS : EXIT_FAILURE;
}
