#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

namespace velmora::test {

/// Lets the event loop run until the condition holds, which is looked at after every turn; false when it
/// didn't within half a minute, which a busy machine can take for what it does in no time otherwise.
template<typename Condition>
[[nodiscard]] bool waitUntil(Condition condition) {
    using namespace std::chrono_literals;
    const QDeadlineTimer deadline(30s);
    QTimer look; // for conditions that change without an event
    look.start(20ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace velmora::test
