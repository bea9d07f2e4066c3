#pragma once

#include "foundation/date.h"
#include "foundation/task.h"

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

namespace velmora {

/// A scheduled call; dropping it cancels it.
class Timer {
public:
    using Cancel = std::function<void()>;

    Timer() = default;
    explicit Timer(Cancel cancel)
        : m_cancel(std::move(cancel)) {}
    ~Timer() { invalidate(); }
    Timer(Timer&& other) noexcept
        : m_cancel(std::exchange(other.m_cancel, nullptr)) {}
    Timer& operator=(Timer&& other) noexcept {
        if (this != &other) {
            invalidate();
            m_cancel = std::exchange(other.m_cancel, nullptr);
        }
        return *this;
    }

    void invalidate() {
        if (const Cancel cancel = std::exchange(m_cancel, nullptr))
            cancel();
    }

private:
    Cancel m_cancel;
};

/// The main thread's queue of work and the one source of time. Everything but `post` belongs to the main
/// thread.
class MainLoop {
public:
    using Work = std::function<void()>;
    using Duration = std::chrono::microseconds;
    using TimePoint = std::chrono::time_point<std::chrono::steady_clock, Duration>;

    virtual ~MainLoop() = default;

    /// Monotonic, for measuring; not affected by changes of the wall clock.
    [[nodiscard]] virtual TimePoint now() const = 0;
    /// Wall clock, for what is stored or compared with the world's dates.
    [[nodiscard]] virtual Date date() const = 0;

    /// Runs the work on the main thread after what is queued already. Any thread.
    virtual void post(Work work) = 0;
    /// Runs the work once, unless the timer is dropped before.
    [[nodiscard]] virtual Timer after(Duration delay, Work work) = 0;
    /// Runs the work every `interval` until the timer is dropped; ticks missed by a busy thread are not made
    /// up.
    [[nodiscard]] virtual Timer every(Duration interval, Work work) = 0;

    /// Runs the work once after the delay, whatever becomes of the caller: hold what it touches weakly.
    void delay(Duration delay, Work work);
    /// Waits; false when `stop` was requested first.
    Task<bool> sleep(Duration delay, std::stop_token stop = {});
};

} // namespace velmora
