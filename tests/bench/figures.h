#pragma once

#include "result.h"

#include <vector>

namespace velmora::bench {

class DictationRuns;

/// Each measures one figure and its baseline; throws NotMeasured.
std::vector<Result> measurePressToAudio(DictationRuns& runs);
std::vector<Result> measureReleaseToRequest(DictationRuns& runs);
std::vector<Result> measureTextToTarget(DictationRuns& runs);
std::vector<Result> measureDoneToIdle(DictationRuns& runs);
std::vector<Result> measureUpload(DictationRuns& runs);
std::vector<Result> measureEventReader(DictationRuns& runs);
std::vector<Result> measureStart(DictationRuns& runs);
std::vector<Result> measureIdle(DictationRuns& runs);
std::vector<Result> measureRecordingMemory(DictationRuns& runs);
std::vector<Result> measurePressToCapsule(DictationRuns& runs);
std::vector<Result> measureRecordingCost(DictationRuns& runs);
std::vector<Result> measurePopup(DictationRuns& runs);
std::vector<Result> measureMainWindow(DictationRuns& runs);
std::vector<Result> measureSearch(DictationRuns& runs);
std::vector<Result> measureSettings(DictationRuns& runs);
std::vector<Result> measureSlider(DictationRuns& runs);
std::vector<Result> measureAfterWindows(DictationRuns& runs);

/// What this program does when it is started to be measured itself; the exit status.
int recordTenMinutes();

} // namespace velmora::bench
