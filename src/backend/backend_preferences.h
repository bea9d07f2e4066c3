#pragma once

#include "foundation/json_value.h"

namespace velmora {

/// The settings that follow the account. As constructed: those of a user who has none yet.
struct BackendPreferences {
    QString transcribeLanguage = QStringLiteral("ru");
    bool cleanupEnabled = true;
    bool devModeEnabled = false;
    std::optional<QString> meetingStorageMode;

    bool operator==(const BackendPreferences&) const = default;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("transcribeLanguage", &BackendPreferences::transcribeLanguage),
                          json::field("cleanupEnabled", &BackendPreferences::cleanupEnabled),
                          json::field("devModeEnabled", &BackendPreferences::devModeEnabled),
                          json::field("meetingStorageMode", &BackendPreferences::meetingStorageMode));
    }
};

} // namespace velmora
