#pragma once

#include "foundation/task.h"

namespace velmora {

/// What the program must be able to do in this session.
enum class PrivacyRight {
    Microphone,      ///< the sound server can be reached and has an input
    InputMonitoring, ///< keys can be watched whoever has the focus
    Accessibility,   ///< a paste can be posted into other programs
    ScreenRecording, ///< what other programs play can be captured
};

/// The rights as they really are: a desktop either has the facility or it hasn't. Main thread.
class PrivacyRights {
public:
    virtual ~PrivacyRights() = default;

    /// The state as far as it is known without waiting. Asks nobody.
    [[nodiscard]] virtual bool isGranted(PrivacyRight right) = 0;
    /// Tries the facility itself.
    virtual Task<bool> probe(PrivacyRight right) = 0;
    /// Asks the user where the desktop has a way to; the answer is the state after it.
    virtual Task<bool> request(PrivacyRight right) = 0;
    /// Opens the place where the user can grant the right: a page of the desktop's settings, or a page that
    /// says what to do.
    virtual void openSettings(PrivacyRight right) = 0;
};

} // namespace velmora
