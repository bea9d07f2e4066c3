#include "foundation/main_loop.h"

#include <coroutine>

namespace velmora {
namespace {

// Resumes its coroutine when the time is up or a stop is requested, whichever comes first, always from the
// loop.
class SleepAwaiter {
public:
    SleepAwaiter(MainLoop& loop, MainLoop::Duration delay, std::stop_token stop)
        : m_loop(loop)
        , m_delay(delay)
        , m_stop(std::move(stop)) {}

    bool await_ready() const { return m_stop.stop_requested(); }

    void await_suspend(std::coroutine_handle<> coroutine) {
        m_state = std::make_shared<State>();
        m_state->coroutine = coroutine;
        m_state->timer = m_loop.after(m_delay, [state = m_state] { state->wake(true); });
        m_onStop = std::make_unique<std::stop_callback<OnStop>>(m_stop, OnStop{&m_loop, m_state});
    }

    bool await_resume() const { return m_state && m_state->slept; }

private:
    struct State {
        std::coroutine_handle<> coroutine;
        Timer timer;
        bool slept = false;

        void wake(bool timeIsUp) {
            if (!coroutine)
                return;
            slept = timeIsUp;
            std::exchange(coroutine, nullptr).resume();
        }
    };

    struct OnStop {
        MainLoop* loop;
        std::shared_ptr<State> state;
        void operator()() const {
            loop->post([state = state] {
                state->timer.invalidate();
                state->wake(false);
            });
        }
    };

    MainLoop& m_loop;
    MainLoop::Duration m_delay;
    std::stop_token m_stop;
    std::shared_ptr<State> m_state;
    std::unique_ptr<std::stop_callback<OnStop>> m_onStop;
};

} // namespace

void MainLoop::delay(Duration delay, Work work) {
    // The timer lives in the work it schedules, and is dropped when that has run.
    auto timer = std::make_shared<Timer>();
    *timer = after(delay, [timer, work = std::move(work)] {
        work();
        *timer = Timer();
    });
}

Task<bool> MainLoop::sleep(Duration delay, std::stop_token stop) {
    co_return co_await SleepAwaiter(*this, delay, std::move(stop));
}

} // namespace velmora
