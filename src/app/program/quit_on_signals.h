#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace velmora {

/// Leaves the event loop on SIGINT, SIGTERM and SIGHUP, so that what the program holds for others (the
/// clipboard) is handed over. One object a process.
class QuitOnSignals : public QObject {
public:
    QuitOnSignals();

private:
    QSocketNotifier m_notifier;
};

} // namespace velmora
