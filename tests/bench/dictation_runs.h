#pragma once

#include "samples.h"

#include <QByteArray>

#include <vector>

namespace velmora::bench {

/// One dictation, its times in milliseconds.
struct DictationTimes {
    double pressToAudio = 0;
    double releaseToRequest = 0;    ///< the first byte at the server, the recording's tail included
    std::vector<double> textToRead; ///< of pieces that came alone
    double pairToRead = 0;          ///< of two that came together, until the second was read
    double doneToIdle = 0;          ///< and the rest of the text read
    QByteArray request;
};

/// Dictations on the real objects, with a keyboard, a sound server, an editor and a scripted backend. All
/// figures of a dictation come from the same ones.
class DictationRuns {
public:
    /// Runs them at the first call. Throws NotMeasured.
    [[nodiscard]] const std::vector<DictationTimes>& get();

private:
    std::vector<DictationTimes> m_dictations;
};

} // namespace velmora::bench
