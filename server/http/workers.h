#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace velmora::server {

/// A fixed number of threads that take jobs in the order in which they came.
class Workers {
public:
    using Job = std::function<void()>;

    explicit Workers(unsigned threads);
    /// Waits for the jobs under way; those that wait are dropped.
    ~Workers() = default;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// A job doesn't throw.
    void add(Job job);

private:
    void work(const std::stop_token& stop);

    std::mutex m_mutex;
    std::condition_variable_any m_added;
    std::deque<Job> m_jobs;
    std::vector<std::jthread> m_threads;
};

} // namespace velmora::server
