#include "support/hand_loop.h"

namespace velmora::test {

void HandLoop::post(Work work) {
    m_posted.push_back(std::move(work));
}

Timer HandLoop::after(Duration delay, Work work) {
    return schedule(delay, Duration::zero(), std::move(work));
}

Timer HandLoop::every(Duration interval, Work work) {
    return schedule(interval, interval, std::move(work));
}

Timer HandLoop::schedule(Duration delay, Duration interval, Work work) {
    const int order = m_nextOrder++;
    m_timers->emplace(Key{m_elapsed + delay, order},
                      Entry{std::make_shared<Work>(std::move(work)), interval});
    return Timer([timers = std::weak_ptr(m_timers), order] {
        if (const auto live = timers.lock())
            std::erase_if(*live, [order](const auto& timer) { return timer.first.second == order; });
    });
}

void HandLoop::runPosted() {
    while (!m_posted.empty()) {
        const Work work = std::move(m_posted.front());
        m_posted.pop_front();
        work();
    }
}

void HandLoop::advance(Duration duration) {
    const Duration until = m_elapsed + duration;
    runPosted();
    while (!m_timers->empty() && m_timers->begin()->first.first <= until) {
        const auto [key, entry] = *m_timers->begin();
        m_timers->erase(m_timers->begin());
        m_elapsed = key.first;
        if (entry.interval > Duration::zero())
            m_timers->emplace(Key{key.first + entry.interval, key.second}, entry);
        (*entry.work)();
        runPosted();
    }
    m_elapsed = until;
}

} // namespace velmora::test
