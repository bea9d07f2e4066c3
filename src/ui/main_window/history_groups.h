#pragma once

#include "core/history_item.h"

#include <QDate>
#include <QStringList>

#include <vector>

namespace velmora {

/// The ages that the history can be narrowed to, the first one at the start. They are known by their text.
[[nodiscard]] const QStringList& historyFilters();
/// The filter that hides nothing.
[[nodiscard]] QString filterOfAll();

/// A text prepared for comparing without regard to case and to how its letters are composed.
[[nodiscard]] QString searchForm(const QString& text);

/// The items that are young enough for the filter and hold the search text, in their order. "Сегодня" means
/// the last 24 hours; an unknown filter sets no limit.
[[nodiscard]] std::vector<HistoryItem> filtered(const std::vector<HistoryItem>& items, const QString& filter,
                                                const QString& search, Date now);

/// The items of one day under its title.
struct DayGroup {
    QString day;
    std::vector<HistoryItem> items;

    bool operator==(const DayGroup&) const = default;
};

/// Today, yesterday, then the older days, the newest first; titles hold no year, so a day of two years is one
/// group. Days are those of the local calendar.
[[nodiscard]] std::vector<DayGroup> groupedByDay(const std::vector<HistoryItem>& items, Date now);

} // namespace velmora
