#include "support/desktop/wait_until.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace velmora::test {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const QDeadlineTimer deadline(timeout);
    QTimer tick; // the condition may depend on other processes, which wake nobody here
    tick.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop events;
        QObject::connect(&tick, &QTimer::timeout, &events, &QEventLoop::quit);
        events.exec();
    }
    return true;
}

} // namespace velmora::test
