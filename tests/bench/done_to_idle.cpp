#include "bare_request.h"
#include "dictation_runs.h"
#include "figures.h"

using namespace std::chrono_literals;

namespace velmora::bench {

std::vector<Result> measureDoneToIdle(DictationRuns& runs) {
    Samples times;
    for (const DictationTimes& dictation : runs.get())
        times.add(dictation.doneToIdle);
    const BareRequest bare = measureBareRequest(runs.get().front().request, 0ms);
    return {{QStringLiteral("done to idle, last text read"), QStringLiteral("ms"), times,
             QStringLiteral("event at a plain socket"), bare.eventToClient, target::MedianAtMost{20}}};
}

} // namespace velmora::bench
