#pragma once

#include <QString>
#include <QVariantList>

#include <span>

namespace velmora {

/// What the window calls the values of a setting, in the window's order.
class SettingLabels {
public:
    struct Entry {
        const char16_t* label;
        QLatin1String value;
    };

    /// `fallback` is the entry that anything unknown stands for, on either side.
    constexpr SettingLabels(std::span<const Entry> entries, std::size_t fallback)
        : m_entries(entries)
        , m_fallback(fallback) {}

    [[nodiscard]] QVariantList labels() const;
    [[nodiscard]] QString label(const QString& value) const;
    [[nodiscard]] QString value(const QString& label) const;

private:
    std::span<const Entry> m_entries;
    std::size_t m_fallback;
};

extern const SettingLabels themeColorLabels;
extern const SettingLabels modeLabels;
extern const SettingLabels hudStyleLabels;
extern const SettingLabels hudSizeLabels;
extern const SettingLabels hudPositionLabels;
extern const SettingLabels transcribeLanguageLabels;

} // namespace velmora
