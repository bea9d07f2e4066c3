#include "ui/settings/settings_tabs.h"

#include "ui/kit/v_icon.h"

#include <algorithm>

namespace velmora {
namespace {

VPillNavItem tab(const char16_t* id, const char16_t* label, VIcon icon) {
    return {.id = QString::fromUtf16(id), .label = QString::fromUtf16(label), .icon = static_cast<int>(icon)};
}

} // namespace

const std::vector<VPillNavItem>& settingsTabs() {
    static const std::vector tabs{
        tab(u"general", u"Общие", VIcon::gear),     tab(u"recording", u"Запись", VIcon::mic),
        tab(u"ai", u"Обработка", VIcon::sparkle),   tab(u"permissions", u"Разрешения", VIcon::lock),
        tab(u"about", u"О программе", VIcon::info),
    };
    return tabs;
}

QString settingsTabBeside(const QString& tab, int steps) {
    const auto& tabs = settingsTabs();
    const auto count = static_cast<int>(tabs.size());
    const auto found = std::ranges::find(tabs, tab, &VPillNavItem::id);
    const int from = found != tabs.end() ? static_cast<int>(found - tabs.begin()) : steps > 0 ? -1 : count;
    return tabs.at(static_cast<std::size_t>(((from + steps) % count + count) % count)).id;
}

} // namespace velmora
