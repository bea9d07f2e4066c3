#pragma once

#include <memory>

struct pa_operation;
struct pa_stream;

namespace velmora {

/// Closes a stream for good; its callbacks don't run any more.
struct PulseStreamClose {
    void operator()(pa_stream* stream) const;
};

/// Lets go of an operation; its callback doesn't run any more.
struct PulseOperationCancel {
    void operator()(pa_operation* operation) const;
};

/// Both need the connection's lock, or the sound thread, also for their end.
using PulseStream = std::unique_ptr<pa_stream, PulseStreamClose>;
using PulseOperation = std::unique_ptr<pa_operation, PulseOperationCancel>;

} // namespace velmora
