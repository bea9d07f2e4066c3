#pragma once

#include "foundation/async_stream.h"
#include "foundation/error.h"
#include "foundation/main_loop.h"

#include <QThreadPool>

namespace velmora {

/// Does away from the main thread what would hold that up: reads files, asks servers that may hang.
class Worker {
public:
    virtual ~Worker() = default;

    virtual void start(std::function<void()> work) = 0;

    /// Has the function run by the worker; the result, or what it has thrown, comes on the main thread. The
    /// function touches nothing but what it brings along.
    template<typename Function>
    Task<std::invoke_result_t<Function>> run(MainLoop& loop, Function function) {
        using Result = std::invoke_result_t<Function>;
        using Producer = typename AsyncStream<Result>::Producer;
        auto [results, producer] = AsyncStream<Result>::make();
        start([&loop, function = std::move(function),
               answer = std::make_shared<Producer>(std::move(producer))] {
            const auto result = std::make_shared<std::optional<Result>>();
            std::exception_ptr failure;
            try {
                *result = function();
            } catch (...) {
                failure = std::current_exception();
            }
            loop.post([answer, result, failure] {
                if (failure) {
                    answer->fail(failure);
                } else {
                    answer->yield(**std::move(result));
                    answer->finish(); // here, for the worker may be the last to let go of it
                }
            });
        });
        std::optional<Result> result = co_await results.next();
        if (!result)
            throw PlainError(QStringLiteral("the program ends"));
        co_return *std::move(result);
    }
};

/// One thread, which takes one piece of work after the other. Its end waits for what is under way.
class ThreadWorker final : public Worker {
public:
    ThreadWorker() { m_pool.setMaxThreadCount(1); }

    void start(std::function<void()> work) override { m_pool.start(std::move(work)); }

private:
    QThreadPool m_pool;
};

} // namespace velmora
