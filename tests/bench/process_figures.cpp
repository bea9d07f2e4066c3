#include "process_figures.h"

#include "result.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

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

// User and system time behind the name in parentheses, which may hold anything.
double cpuMilliseconds(const QByteArray& stat) {
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    const qint64 ticks = fields.at(11).toLongLong() + fields.at(12).toLongLong();
    return 1000.0 * double(ticks) / double(sysconf(_SC_CLK_TCK));
}

} // namespace

ProcessFigures ProcessFigures::of(qint64 pid) {
    const QString folder = QStringLiteral("/proc/%1/").arg(pid);
    ProcessFigures figures;
    figures.cpuMilliseconds = bench::cpuMilliseconds(contentOf(folder + QStringLiteral("stat")));
    const QString tasks = folder + QStringLiteral("task");
    for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        figures.wakeups += field(contentOf(tasks + QLatin1Char('/') + task + QStringLiteral("/status")),
                                 "voluntary_ctxt_switches");
    figures.residentMegabytes = megabytes(field(contentOf(folder + QStringLiteral("status")), "VmRSS"));
    figures.proportionalMegabytes =
        megabytes(field(contentOf(folder + QStringLiteral("smaps_rollup")), "Pss"));
    return figures;
}

double ownResidentMegabytes() {
    return megabytes(field(contentOf(QStringLiteral("/proc/self/status")), "VmRSS"));
}

} // namespace velmora::bench
