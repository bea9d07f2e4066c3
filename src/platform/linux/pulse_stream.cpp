#include "platform/linux/pulse_stream.h"

#include <pulse/operation.h>
#include <pulse/stream.h>

namespace velmora {
namespace {

void disconnect(pa_stream* stream) {
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

// The server would keep a stream open for ever that is disconnected before the server has answered its
// creation.
void disconnectWhenCreated(pa_stream* stream, void*) {
    if (pa_stream_get_state(stream) != PA_STREAM_CREATING)
        disconnect(stream);
}

} // namespace

void PulseStreamClose::operator()(pa_stream* stream) const {
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    pa_stream_set_moved_callback(stream, nullptr, nullptr);
    pa_stream_set_suspended_callback(stream, nullptr, nullptr);
    if (pa_stream_get_state(stream) == PA_STREAM_CREATING)
        pa_stream_set_state_callback(stream, disconnectWhenCreated, nullptr);
    else
        disconnect(stream);
}

void PulseOperationCancel::operator()(pa_operation* operation) const {
    pa_operation_cancel(operation);
    pa_operation_unref(operation);
}

} // namespace velmora
