#pragma once

#include <functional>

namespace velmora::test {

class DictationSession;

/// Dictates in the first run's two tutorials, holding the key in the one and tapping it in the other, and
/// goes on from the first. False when a text doesn't come into its field.
[[nodiscard]] bool dictatesInBothTutorials(DictationSession& session, const std::function<void()>& goOn);

} // namespace velmora::test
