#include "accounts/preferences.h"

#include "http/http_error.h"
#include "speech/language.h"

namespace velmora::server {

namespace {

[[noreturn]] void refuse(const std::string& key) {
    throw HttpError(400, "invalid_preferences", "Недопустимое значение настройки", {{"field", key}});
}

std::optional<bool> booleanAt(const Poco::JSON::Object& object, const std::string& key) {
    if (!object.has(key)) {
        return std::nullopt;
    }
    const auto value = object.get(key);
    if (!value.isBoolean()) {
        refuse(key);
    }
    return value.extract<bool>();
}

template<typename Valid>
std::optional<std::string> stringAt(const Poco::JSON::Object& object, const std::string& key, Valid valid) {
    if (!object.has(key)) {
        return std::nullopt;
    }
    const auto value = object.get(key);
    if (!value.isString() || !valid(value.extract<std::string>())) {
        refuse(key);
    }
    return value.extract<std::string>();
}

bool isStorageMode(const std::string& mode) {
    return mode == "LOCAL" || mode == "DRIVE" || mode == "BOTH";
}

} // namespace

Poco::JSON::Object Preferences::toJson() const {
    Poco::JSON::Object object;
    object.set("transcribeLanguage", transcribeLanguage);
    object.set("cleanupEnabled", cleanupEnabled);
    object.set("devModeEnabled", devModeEnabled);
    if (meetingStorageMode) {
        object.set("meetingStorageMode", *meetingStorageMode);
    }
    return object;
}

PreferencesPatch PreferencesPatch::fromJson(const Poco::JSON::Object& object) {
    return {
        .transcribeLanguage =
            stringAt(object, "transcribeLanguage",
                     [](const std::string& name) { return Language::fromPreference(name).has_value(); }),
        .cleanupEnabled = booleanAt(object, "cleanupEnabled"),
        .devModeEnabled = booleanAt(object, "devModeEnabled"),
        .meetingStorageMode = stringAt(object, "meetingStorageMode", isStorageMode),
    };
}

Preferences PreferencesPatch::appliedTo(Preferences preferences) const {
    preferences.transcribeLanguage = transcribeLanguage.value_or(preferences.transcribeLanguage);
    preferences.cleanupEnabled = cleanupEnabled.value_or(preferences.cleanupEnabled);
    preferences.devModeEnabled = devModeEnabled.value_or(preferences.devModeEnabled);
    if (meetingStorageMode) {
        preferences.meetingStorageMode = meetingStorageMode;
    }
    return preferences;
}

} // namespace velmora::server
