#pragma once

#include "foundation/error.h"
#include "foundation/task.h"

#include <memory>
#include <optional>

namespace velmora::test {

struct Nothing {};

/// Runs a task and keeps what becomes of it.
template<typename T = void>
class Outcome {
    using Value = std::conditional_t<std::is_void_v<T>, Nothing, T>;
    struct State {
        std::optional<Value> value;
        std::exception_ptr failure;
    };

public:
    explicit Outcome(Task<T> task) { follow(m_state, std::move(task)); }

    [[nodiscard]] bool isDone() const { return m_state->value || m_state->failure; }
    [[nodiscard]] bool succeeded() const { return m_state->value.has_value(); }
    /// Throws the task's failure.
    [[nodiscard]] Value& value() const {
        if (m_state->failure)
            std::rethrow_exception(m_state->failure);
        return m_state->value.value();
    }
    /// The failure's description; empty when there is none.
    [[nodiscard]] QString failure() const {
        return m_state->failure ? describe(m_state->failure) : QString();
    }
    /// The failure when it is an E.
    template<typename E>
    [[nodiscard]] std::optional<E> failureAs() const {
        try {
            if (m_state->failure)
                std::rethrow_exception(m_state->failure);
        } catch (const E& error) {
            return error;
        } catch (...) {
            return std::nullopt;
        }
        return std::nullopt;
    }

private:
    static Task<> follow(std::shared_ptr<State> state, Task<T> task) {
        try {
            if constexpr (std::is_void_v<T>) {
                co_await task;
                state->value.emplace();
            } else {
                state->value.emplace(co_await task);
            }
        } catch (...) {
            state->failure = std::current_exception();
        }
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace velmora::test
