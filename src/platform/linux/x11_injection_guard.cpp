#include "platform/linux/x11_injection_guard.h"

#include <atomic>

namespace velmora {
namespace {

/// Lives in the thread that makes the first filter; its signal reaches the filters in theirs.
class Injections : public QObject {
    Q_OBJECT

public:
    std::atomic<int> begun = 0;
    std::atomic<int> ended = 0;

    static Injections& shared() {
        static Injections injections;
        return injections;
    }

Q_SIGNALS:
    void anEnd();
};

} // namespace

X11InjectionGuard::X11InjectionGuard() {
    ++Injections::shared().begun;
}

X11InjectionGuard::~X11InjectionGuard() {
    ++Injections::shared().ended;
    Q_EMIT Injections::shared().anEnd();
}

X11InjectionFilter::X11InjectionFilter(X11Connection& connection)
    : m_connection(connection)
    , m_fencedEnds(Injections::shared().ended)
    , m_fence(xcb_no_operation(connection.get()).sequence) {
    connect(&Injections::shared(), &Injections::anEnd, this, &X11InjectionFilter::fence,
            Qt::QueuedConnection);
}

bool X11InjectionFilter::isOwn(uint32_t eventSequence) const {
    const Injections& injections = Injections::shared();
    const int ended = injections.ended;
    if (injections.begun != ended || ended != m_fencedEnds)
        return true;
    return static_cast<int32_t>(eventSequence - m_fence) < 0;
}

void X11InjectionFilter::fence() {
    m_fencedEnds = Injections::shared().ended;
    m_fence = xcb_no_operation(m_connection.get()).sequence;
}

} // namespace velmora

#include "x11_injection_guard.moc"
