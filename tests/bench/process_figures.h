#pragma once

#include <QtGlobal>

namespace velmora::bench {

/// What the kernel tells of a process; throws NotMeasured when it doesn't.
struct ProcessFigures {
    double cpuMilliseconds = 0; ///< of its threads
    qint64 wakeups = 0;         ///< how often a thread stopped waiting
    double residentMegabytes = 0;
    double proportionalMegabytes = 0; ///< shared pages divided among those who share them

    [[nodiscard]] static ProcessFigures of(qint64 pid);
};

/// The resident memory of this process, in megabytes.
[[nodiscard]] double ownResidentMegabytes();

} // namespace velmora::bench
