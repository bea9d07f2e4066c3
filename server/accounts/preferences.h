#pragma once

#include <Poco/JSON/Object.h>

#include <optional>
#include <string>

namespace velmora::server {

/// The settings that follow an account.
struct Preferences {
    std::string transcribeLanguage;
    bool cleanupEnabled = true;
    bool devModeEnabled = false;
    std::optional<std::string> meetingStorageMode;

    bool operator==(const Preferences&) const = default;

    [[nodiscard]] Poco::JSON::Object toJson() const;
};

/// A change of some of them; what is empty stays as it is.
struct PreferencesPatch {
    std::optional<std::string> transcribeLanguage;
    std::optional<bool> cleanupEnabled;
    std::optional<bool> devModeEnabled;
    std::optional<std::string> meetingStorageMode;

    /// Unknown keys are ignored. A known key with a wrong type or value fails with HttpError 400, whose
    /// details name the key.
    [[nodiscard]] static PreferencesPatch fromJson(const Poco::JSON::Object& object);

    [[nodiscard]] Preferences appliedTo(Preferences preferences) const;
};

} // namespace velmora::server
