#pragma once

#include "samples.h"

#include <QByteArray>

namespace velmora::bench {

/// What a plain socket needs for the same request, without the application around it, in milliseconds.
struct BareRequest {
    Samples timerToFirstByte; ///< a timer of `tail`, connecting and sending
    Samples eventToClient;    ///< from the server to the main loop's notice
};

[[nodiscard]] BareRequest measureBareRequest(const QByteArray& request, std::chrono::milliseconds tail);

} // namespace velmora::bench
