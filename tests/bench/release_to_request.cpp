#include "bare_request.h"
#include "dictation_runs.h"
#include "figures.h"

using namespace std::chrono_literals;

namespace velmora::bench {

std::vector<Result> measureReleaseToRequest(DictationRuns& runs) {
    constexpr auto tail = 150ms; // what is said while the key goes up
    Samples times;
    for (const DictationTimes& dictation : runs.get())
        times.add(dictation.releaseToRequest);
    const BareRequest bare = measureBareRequest(runs.get().front().request, tail);
    return {{QStringLiteral("release to request's first byte"), QStringLiteral("ms"), times,
             QStringLiteral("150 ms timer, plain socket"), bare.timerToFirstByte,
             target::P95AtMost{double(tail.count() + 15)}}};
}

} // namespace velmora::bench
