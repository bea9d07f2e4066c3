#include "http/workers.h"

namespace velmora::server {

Workers::Workers(unsigned threads) {
    for (unsigned i = 0; i < threads; ++i) {
        m_threads.emplace_back([this](const std::stop_token& stop) { work(stop); });
    }
}

void Workers::add(Job job) {
    {
        const std::scoped_lock lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_added.notify_one();
}

void Workers::work(const std::stop_token& stop) {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(m_mutex);
            m_added.wait(lock, stop, [this] { return !m_jobs.empty(); });
            if (stop.stop_requested()) {
                return;
            }
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

} // namespace velmora::server
