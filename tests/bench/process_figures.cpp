#include "process_figures.h"

#include "result.h"

#include <QDir>
#include <QFile>

#include <ctime>

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

double cpuTime(qint64 pid) {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(static_cast<pid_t>(pid), &clock) != 0 || clock_gettime(clock, &time) != 0)
        throw NotMeasured(QStringLiteral("no processor time of process %1").arg(pid));
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

} // namespace

ProcessFigures ProcessFigures::of(qint64 pid) {
    const QString folder = QStringLiteral("/proc/%1/").arg(pid);
    ProcessFigures figures;
    const QDir tasks(folder + QStringLiteral("task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        figures.wakeups[task] =
            field(contentOf(tasks.filePath(task) + QStringLiteral("/status")), "voluntary_ctxt_switches");
    figures.cpuMilliseconds = cpuTime(pid);
    figures.residentMegabytes = megabytes(field(contentOf(folder + QStringLiteral("status")), "VmRSS"));
    figures.proportionalMegabytes =
        megabytes(field(contentOf(folder + QStringLiteral("smaps_rollup")), "Pss"));
    return figures;
}

qint64 ProcessFigures::wakeupsSince(const ProcessFigures& earlier) const {
    qint64 sum = 0;
    for (auto thread = wakeups.cbegin(); thread != wakeups.cend(); ++thread) {
        if (earlier.wakeups.contains(thread.key()))
            sum += *thread - earlier.wakeups.value(thread.key());
    }
    return sum;
}

double ownResidentMegabytes() {
    return megabytes(field(contentOf(QStringLiteral("/proc/self/status")), "VmRSS"));
}

} // namespace velmora::bench
