#pragma once

#include "backend/backend_preferences.h"

namespace velmora {

/// A change of some of the BackendPreferences; what is absent stays as it is.
struct PreferencesPatch {
    std::optional<QString> transcribeLanguage = {};
    std::optional<bool> cleanupEnabled = {};
    std::optional<bool> devModeEnabled = {};
    std::optional<QString> meetingStorageMode = {};

    bool operator==(const PreferencesPatch&) const = default;

    /// Takes over what `later` changes.
    void merge(const PreferencesPatch& later);
    [[nodiscard]] BackendPreferences appliedTo(BackendPreferences preferences) const;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("transcribeLanguage", &PreferencesPatch::transcribeLanguage),
                          json::field("cleanupEnabled", &PreferencesPatch::cleanupEnabled),
                          json::field("devModeEnabled", &PreferencesPatch::devModeEnabled),
                          json::field("meetingStorageMode", &PreferencesPatch::meetingStorageMode));
    }
};

} // namespace velmora
