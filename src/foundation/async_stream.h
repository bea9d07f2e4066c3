#pragma once

#include "foundation/task.h"

#include <coroutine>
#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>

namespace velmora {

/// A sequence of values that one side produces at its own pace and the other awaits one by one. The buffer is
/// unbounded. Both ends belong to the main thread and share the state, so either may go first: when the
/// consumer's end goes, the producer's stop token is requested; when the producer's end goes without a
/// finish, the sequence ends.
template<typename T>
class AsyncStream {
    struct State {
        std::deque<T> values;
        std::exception_ptr failure;
        bool finished = false;
        std::coroutine_handle<> waiting;
        std::stop_source stop;

        void wake() {
            if (waiting)
                std::exchange(waiting, nullptr).resume();
        }
        void end() {
            finished = true;
            wake();
        }
    };

public:
    class Producer {
    public:
        explicit Producer(std::shared_ptr<State> state)
            : m_state(std::move(state)) {}
        ~Producer() {
            if (m_state)
                m_state->end();
        }
        Producer(Producer&&) noexcept = default;
        Producer& operator=(Producer&&) = delete;

        /// Requested when nobody will take a value any more.
        [[nodiscard]] std::stop_token stopToken() const { return m_state->stop.get_token(); }

        void yield(T value) {
            const auto state = m_state; // the consumer may drop both ends when it wakes
            state->values.push_back(std::move(value));
            state->wake();
        }
        void finish() { std::exchange(m_state, nullptr)->end(); }
        /// Ends the sequence; the consumer gets the failure after the values before it.
        void fail(std::exception_ptr failure) {
            m_state->failure = std::move(failure);
            finish();
        }

    private:
        std::shared_ptr<State> m_state;
    };

    /// A stream and its producing end.
    [[nodiscard]] static std::pair<AsyncStream, Producer> make() {
        auto state = std::make_shared<State>();
        return {AsyncStream(state), Producer(state)};
    }

    ~AsyncStream() {
        if (m_state)
            m_state->stop.request_stop();
    }
    AsyncStream(AsyncStream&&) noexcept = default;
    AsyncStream& operator=(AsyncStream&&) = delete;

    /// The next value, none at the end; throws the producer's failure. One waiter at a time.
    Task<std::optional<T>> next() {
        const auto state = m_state;
        while (state->values.empty() && !state->finished)
            co_await Arrival{state.get()};
        if (!state->values.empty()) {
            std::optional<T> value(std::move(state->values.front()));
            state->values.pop_front();
            co_return value;
        }
        if (state->failure)
            std::rethrow_exception(std::exchange(state->failure, nullptr));
        co_return std::nullopt;
    }

private:
    struct Arrival {
        State* state;
        [[nodiscard]] bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> coroutine) const { state->waiting = coroutine; }
        void await_resume() const {}
    };

    explicit AsyncStream(std::shared_ptr<State> state)
        : m_state(std::move(state)) {}

    std::shared_ptr<State> m_state;
};

} // namespace velmora
