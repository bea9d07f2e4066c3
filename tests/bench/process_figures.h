#pragma once

#include <QHash>
#include <QString>

namespace velmora::bench {

/// What the kernel tells of a process; throws NotMeasured when it doesn't.
struct ProcessFigures {
    double cpuMilliseconds = 0;     ///< of all its threads, also of those that have ended
    QHash<QString, qint64> wakeups; ///< how often each living thread stopped waiting
    double residentMegabytes = 0;
    double proportionalMegabytes = 0; ///< shared pages divided among those who share them

    [[nodiscard]] static ProcessFigures of(qint64 pid);
    /// How often the threads that lived then and now stopped waiting in between.
    [[nodiscard]] qint64 wakeupsSince(const ProcessFigures& earlier) const;
};

/// The resident memory of this process, in megabytes.
[[nodiscard]] double ownResidentMegabytes();

} // namespace velmora::bench
