#pragma once

#include "foundation/error.h"

#include <variant>

namespace velmora {

/// Why an input can't be used.
class AudioDeviceError : public Error {
public:
    struct NotFound {
        QString uniqueID; ///< no device with this ID, or the device list can't be read
        bool operator==(const NotFound&) const = default;
    };
    struct SetFailed {
        int status = 0; ///< the sound server's error code
        bool operator==(const SetFailed&) const = default;
    };
    struct MicNotAuthorized {
        bool operator==(const MicNotAuthorized&) const = default;
    };
    struct EngineUnavailable { ///< the input has no usable format
        bool operator==(const EngineUnavailable&) const = default;
    };
    using Reason = std::variant<NotFound, SetFailed, MicNotAuthorized, EngineUnavailable>;

    explicit AudioDeviceError(Reason reason);

    [[nodiscard]] const Reason& reason() const { return m_reason; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Reason m_reason;
};

} // namespace velmora
