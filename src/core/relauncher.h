#pragma once

#include "foundation/main_loop.h"

#include <QStringList>

namespace velmora {

/// The shell script that waits until the process has gone and then runs the program: while the old one lives,
/// a new one would only hand over to it and leave.
[[nodiscard]] QString relaunchScript(const QString& executable, qint64 processId);
/// The same from a helper of its own, which waits half a second more; the shell that runs this ends at once.
[[nodiscard]] QString delayedRelaunchScript(const QString& executable, qint64 processId);

/// Ends this process and has a helper start the program again.
class Relauncher {
public:
    struct Neighbours {
        MainLoop& loop;
        QString executable;
        qint64 processId = 0;
        /// Starts a program that outlives this process; throws Error when it can't.
        std::function<void(const QString& program, const QStringList& arguments)> start;
        /// Closes the windows, then runs the callback.
        std::function<void(std::function<void()> callback)> dismissModalUIThen;
        std::function<void()> terminate;
    };

    explicit Relauncher(Neighbours neighbours);

    /// False when the helper can't be started: that is logged, and this process stays.
    bool relaunch();
    /// Leaves whether or not the helper could be started.
    void relaunchWithDelay();

private:
    void runShell(const QString& script);
    void leave();

    const Neighbours m_neighbours;
};

} // namespace velmora
