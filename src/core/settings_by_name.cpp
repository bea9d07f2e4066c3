#include "core/settings_by_name.h"

#include "core/app_settings.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace velmora {
namespace {

constexpr qint64 largestKeyCode = std::numeric_limits<int>::max();

QMetaProperty propertyNamed(const QString& key) {
    const QMetaObject& type = AppSettings::staticMetaObject;
    const int index = type.indexOfProperty(key.toUtf8().constData());
    if (index < type.propertyOffset())
        throw BadSetting(QStringLiteral("there is no setting \"%1\"").arg(key));
    return type.property(index);
}

[[noreturn]] void refuse(const WrittenSetting& setting, const char* wanted) {
    throw BadSetting(
        QStringLiteral("\"%1\" is %2, not \"%3\"").arg(setting.key, QLatin1String(wanted), setting.value));
}

QVariant booleanFrom(const WrittenSetting& setting) {
    if (setting.value != QLatin1String("true") && setting.value != QLatin1String("false"))
        refuse(setting, "true or false");
    return setting.value == QLatin1String("true");
}

QVariant integerFrom(const WrittenSetting& setting) {
    bool isNumber = false;
    const qint64 number = setting.value.toLongLong(&isNumber);
    if (!isNumber || setting.value != setting.value.trimmed())
        refuse(setting, "a whole number");
    // Bits can't be negative; who reads them takes that for the program's own mistake and stops.
    if (number < 0 && setting.key == QLatin1String("hotkeyCustomMask"))
        refuse(setting, "a whole number from 0 on");
    if (setting.key == QLatin1String("hotkeyCustomKeyCode") && (number < -1 || number > largestKeyCode))
        refuse(setting, "the code of a key, or -1");
    return number;
}

QVariant realFrom(const WrittenSetting& setting) {
    bool isNumber = false;
    const double number = setting.value.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number) || setting.value != setting.value.trimmed())
        refuse(setting, "a number");
    return number;
}

QVariant textFrom(const WrittenSetting& setting) {
    if (setting.value.contains(QLatin1Char('\n')))
        refuse(setting, "a text of one line");
    return setting.value;
}

QVariant valueFrom(const WrittenSetting& setting, const QMetaProperty& property) {
    switch (property.typeId()) {
    case QMetaType::Bool:
        return booleanFrom(setting);
    case QMetaType::LongLong:
        return integerFrom(setting);
    case QMetaType::Double:
        return realFrom(setting);
    default:
        return textFrom(setting);
    }
}

} // namespace

QString SettingsByName::value(const QString& key) const {
    return written(propertyNamed(key));
}

std::vector<WrittenSetting> SettingsByName::all() const {
    const QMetaObject& type = AppSettings::staticMetaObject;
    std::vector<WrittenSetting> settings;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i)
        settings.push_back({QString::fromLatin1(type.property(i).name()), written(type.property(i))});
    return settings;
}

void SettingsByName::set(const std::vector<WrittenSetting>& changes) {
    std::vector<std::pair<QMetaProperty, QVariant>> checked;
    for (const WrittenSetting& change : changes) {
        const QMetaProperty property = propertyNamed(change.key);
        checked.emplace_back(property, valueFrom(change, property));
    }
    for (const auto& [property, newValue] : checked) {
        property.write(&m_settings, newValue);
        if (!m_defaults.isSaved())
            throw PlainError(QStringLiteral("the settings can't be stored"));
    }
}

QString SettingsByName::written(const QMetaProperty& property) const {
    const QVariant value = property.read(&m_settings);
    return property.typeId() == QMetaType::Double
               ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
               : value.toString();
}

} // namespace velmora
