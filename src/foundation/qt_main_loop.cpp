#include "foundation/qt_main_loop.h"

#include <QPointer>
#include <QTimer>

namespace velmora {

MainLoop::TimePoint QtMainLoop::now() const {
    return std::chrono::time_point_cast<Duration>(std::chrono::steady_clock::now());
}

Date QtMainLoop::date() const {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

void QtMainLoop::post(Work work) {
    QMetaObject::invokeMethod(&m_context, std::move(work), Qt::QueuedConnection);
}

Timer QtMainLoop::after(Duration delay, Work work) {
    return schedule(delay, true, std::move(work));
}

Timer QtMainLoop::every(Duration interval, Work work) {
    return schedule(interval, false, std::move(work));
}

Timer QtMainLoop::schedule(Duration interval, bool once, Work work) {
    QPointer<QTimer> timer = new QTimer(&m_context);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(once);
    timer->setInterval(std::chrono::ceil<std::chrono::milliseconds>(interval));
    QObject::connect(timer, &QTimer::timeout, &m_context, std::move(work));
    if (once)
        QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    timer->start();
    return Timer([timer] {
        if (!timer)
            return;
        timer->stop();
        timer->deleteLater();
    });
}

} // namespace velmora
