#include "backend/preferences_patch.h"

namespace velmora {
namespace {

template<typename Value>
void replace(Value& field, const std::optional<Value>& value) {
    if (value)
        field = *value;
}

template<typename Value>
void replace(std::optional<Value>& field, const std::optional<Value>& value) {
    if (value)
        field = value;
}

/// Both a record and a patch of it have the fields.
template<typename Record>
void apply(Record& record, const PreferencesPatch& patch) {
    replace(record.transcribeLanguage, patch.transcribeLanguage);
    replace(record.cleanupEnabled, patch.cleanupEnabled);
    replace(record.devModeEnabled, patch.devModeEnabled);
    replace(record.meetingStorageMode, patch.meetingStorageMode);
}

} // namespace

void PreferencesPatch::merge(const PreferencesPatch& later) {
    apply(*this, later);
}

BackendPreferences PreferencesPatch::appliedTo(BackendPreferences preferences) const {
    apply(preferences, *this);
    return preferences;
}

} // namespace velmora
