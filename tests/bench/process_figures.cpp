#include "process_figures.h"

#include "result.h"

#include <QDir>
#include <QFile>

namespace velmora::bench {
namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw NotMeasured(QStringLiteral("can't read ") + path);
    return file.readAll();
}

/// The number behind "name:" in a file of such lines.
qint64 field(const QByteArray& content, const QByteArray& name) {
    const qsizetype at = ("\n" + content).indexOf("\n" + name + ":");
    if (at < 0)
        throw NotMeasured(QStringLiteral("no field ") + QString::fromLatin1(name));
    const QByteArray line = content.mid(at + name.size() + 1);
    return line.left(line.indexOf('\n')).simplified().split(' ').front().toLongLong();
}

double megabytes(qint64 kibibytes) {
    return double(kibibytes) * 1024 / 1e6;
}

} // namespace

ProcessFigures ProcessFigures::of(qint64 pid) {
    const QString folder = QStringLiteral("/proc/%1/").arg(pid);
    ProcessFigures figures;
    const QDir tasks(folder + QStringLiteral("task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString path = tasks.filePath(task);
        // Nanoseconds; the times of "stat" are counted in hundredths of a second.
        const QByteArray time = contentOf(path + QStringLiteral("/schedstat"));
        figures.cpuMilliseconds += double(time.left(time.indexOf(' ')).toLongLong()) / 1e6;
        figures.wakeups += field(contentOf(path + QStringLiteral("/status")), "voluntary_ctxt_switches");
    }
    figures.residentMegabytes = megabytes(field(contentOf(folder + QStringLiteral("status")), "VmRSS"));
    figures.proportionalMegabytes =
        megabytes(field(contentOf(folder + QStringLiteral("smaps_rollup")), "Pss"));
    return figures;
}

double ownResidentMegabytes() {
    return megabytes(field(contentOf(QStringLiteral("/proc/self/status")), "VmRSS"));
}

} // namespace velmora::bench
