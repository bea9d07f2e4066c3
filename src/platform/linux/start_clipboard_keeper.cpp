#include "platform/linux/start_clipboard_keeper.h"

#include "foundation/log.h"

#include <QDataStream>
#include <QFile>
#include <QProcess>

#include <sys/mman.h>

namespace velmora {

void startClipboardKeeper(const QString& program, const ClipboardContents& contents) {
    if (program.isEmpty())
        return;
    // A file without a name, for the contents are nobody else's business.
    QFile file;
    const int descriptor = memfd_create("clipboard", MFD_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::WriteOnly, QFile::AutoCloseHandle) ||
        file.write(encodeClipboard(contents)) < 0 || !file.flush()) {
        log(QStringLiteral("[Velmora] clipboard: can't be handed over: ") + file.errorString());
        return;
    }
    QProcess keeper;
    keeper.setProgram(program);
    keeper.setStandardInputFile(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    keeper.setStandardOutputFile(QProcess::nullDevice());
    keeper.setStandardErrorFile(QProcess::nullDevice());
    if (!keeper.startDetached())
        log(QStringLiteral("[Velmora] clipboard: can't be handed over: ") + keeper.errorString());
}

QByteArray encodeClipboard(const ClipboardContents& contents) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << contents.secret << quint32(contents.forms.size());
    for (const ClipboardContents::Form& form : contents.forms)
        stream << form.type << form.bytes;
    return bytes;
}

std::optional<ClipboardContents> decodeClipboard(const QByteArray& bytes) {
    QDataStream stream(bytes);
    ClipboardContents contents;
    quint32 count = 0;
    stream >> contents.secret >> count;
    for (quint32 at = 0; at < count && stream.status() == QDataStream::Ok; ++at) {
        ClipboardContents::Form form;
        stream >> form.type >> form.bytes;
        contents.forms.push_back(std::move(form));
    }
    if (stream.status() != QDataStream::Ok)
        return std::nullopt;
    return contents;
}

} // namespace velmora
