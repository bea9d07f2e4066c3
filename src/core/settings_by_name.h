#pragma once

#include "foundation/error.h"

#include <QMetaProperty>
#include <QStringList>

#include <vector>

namespace velmora {

class AppSettings;
class UserDefaults;

/// A setting in writing: true or false, a number with a point, a whole number, or a text of one line.
struct WrittenSetting {
    QString key;
    QString value;

    bool operator==(const WrittenSetting&) const = default;
};

/// There is no such setting, or it can't have that value.
class BadSetting : public PlainError {
public:
    using PlainError::PlainError;
};

/// The properties of AppSettings for those who know them by name only, as scripts do. Main thread only.
class SettingsByName {
public:
    /// `defaults` is where the settings are stored.
    SettingsByName(AppSettings& settings, const UserDefaults& defaults)
        : m_settings(settings)
        , m_defaults(defaults) {}

    /// Throws BadSetting.
    [[nodiscard]] QString value(const QString& key) const;
    /// All of them in order of declaration.
    [[nodiscard]] std::vector<WrittenSetting> all() const;
    /// Stores all of them, or none when one is bad: BadSetting. Throws PlainError when the store can't be
    /// written.
    void set(const std::vector<WrittenSetting>& changes);

private:
    [[nodiscard]] QString written(const QMetaProperty& property) const;

    AppSettings& m_settings;
    const UserDefaults& m_defaults;
};

} // namespace velmora
