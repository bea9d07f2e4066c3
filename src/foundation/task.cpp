#include "foundation/task.h"

#include "foundation/error.h"
#include "foundation/log.h"

namespace velmora {
namespace {

// The frame keeps itself alive until it ends; the Task returned to start() may be dropped.
Task<> runToEnd(QString name, Task<> task) {
    try {
        co_await task;
    } catch (...) {
        log(QStringLiteral("[Velmora] %1: %2").arg(name, describe(std::current_exception())));
    }
}

} // namespace

void TaskScope::start(QString name, Task<> task) {
    runToEnd(std::move(name), std::move(task));
}

} // namespace velmora
