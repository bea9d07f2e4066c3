#include "ui/settings/setting_labels.h"

#include <array>

namespace velmora {
namespace {

using Entry = SettingLabels::Entry;

constexpr std::array themeColors{
    Entry{u"Teal", QLatin1String("teal")},
    Entry{u"Lime", QLatin1String("lime")},
};
constexpr std::array modes{
    Entry{u"Push-to-talk", QLatin1String("push-to-talk")},
    Entry{u"Toggle", QLatin1String("toggle")},
};
constexpr std::array hudStyles{
    Entry{u"Полосы", QLatin1String("bars")},
    Entry{u"Волна", QLatin1String("wave")},
    Entry{u"Точки", QLatin1String("dots")},
};
constexpr std::array hudSizes{
    Entry{u"Малый", QLatin1String("small")},
    Entry{u"Средний", QLatin1String("medium")},
    Entry{u"Большой", QLatin1String("large")},
};
constexpr std::array hudPositions{
    Entry{u"Сверху", QLatin1String("top")},
    Entry{u"Снизу", QLatin1String("bottom")},
};
constexpr std::array transcribeLanguages{
    Entry{u"Русский", QLatin1String("ru")},
    Entry{u"English", QLatin1String("English")},
    Entry{u"Авто", QLatin1String("auto")},
};

} // namespace

constinit const SettingLabels themeColorLabels(themeColors, 1);
constinit const SettingLabels modeLabels(modes, 0);
constinit const SettingLabels hudStyleLabels(hudStyles, 0);
constinit const SettingLabels hudSizeLabels(hudSizes, 1);
constinit const SettingLabels hudPositionLabels(hudPositions, 0);
constinit const SettingLabels transcribeLanguageLabels(transcribeLanguages, 0);

QVariantList SettingLabels::labels() const {
    QVariantList labels;
    for (const Entry& entry : m_entries)
        labels.append(QString::fromUtf16(entry.label));
    return labels;
}

QString SettingLabels::label(const QString& value) const {
    for (const Entry& entry : m_entries) {
        if (value == entry.value)
            return QString::fromUtf16(entry.label);
    }
    return QString::fromUtf16(m_entries[m_fallback].label);
}

QString SettingLabels::value(const QString& label) const {
    for (const Entry& entry : m_entries) {
        if (label == entry.label)
            return entry.value;
    }
    return m_entries[m_fallback].value;
}

} // namespace velmora
