#include "ui/main_window/history_groups.h"

#include "ui/main_window/history_texts.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

double cutoffSeconds(const QString& filter) {
    if (filter == historyFilters().at(0))
        return 86400;
    if (filter == historyFilters().at(1))
        return 604800;
    return std::numeric_limits<double>::max();
}

struct OlderDay {
    DayGroup group;
    QDate newest;
};

} // namespace

const QStringList& historyFilters() {
    static const QStringList filters{QStringLiteral("Сегодня"), QStringLiteral("7 дней"),
                                     QStringLiteral("Всё")};
    return filters;
}

QString filterOfAll() {
    return historyFilters().constLast();
}

QString searchForm(const QString& text) {
    // Folding alone goes letter by letter; by way of capitals "ß" is "ss".
    return text.normalized(QString::NormalizationForm_C).toUpper().toCaseFolded();
}

std::vector<HistoryItem> filtered(const std::vector<HistoryItem>& items, const QString& filter,
                                  const QString& search, Date now) {
    const double nowSeconds = toUnixSeconds(now);
    const double cutoff = cutoffSeconds(filter);
    const QString wanted = searchForm(search);
    const auto stays = [&](const HistoryItem& item) {
        return (filter == filterOfAll() || nowSeconds - toUnixSeconds(item.date) < cutoff) &&
               (wanted.isEmpty() || searchForm(item.cleanedText).contains(wanted));
    };
    std::vector<HistoryItem> result;
    std::ranges::copy_if(items, std::back_inserter(result), stays);
    return result;
}

std::vector<DayGroup> groupedByDay(const std::vector<HistoryItem>& items, Date now) {
    const QDate today = localTime(now).date();
    DayGroup ofToday{QStringLiteral("Сегодня"), {}};
    DayGroup ofYesterday{QStringLiteral("Вчера"), {}};
    std::vector<OlderDay> older;
    for (const HistoryItem& item : items) {
        const QDate day = localTime(item.date).date();
        if (day == today) {
            ofToday.items.push_back(item);
        } else if (day == today.addDays(-1)) {
            ofYesterday.items.push_back(item);
        } else {
            const auto sameTitle = [day](const OlderDay& other) {
                return other.newest.month() == day.month() && other.newest.day() == day.day();
            };
            auto found = std::ranges::find_if(older, sameTitle);
            if (found == older.end())
                found = older.insert(older.end(), {{dayTitle(day), {}}, day});
            found->newest = std::max(found->newest, day);
            found->group.items.push_back(item);
        }
    }
    std::ranges::sort(older, std::ranges::greater(), &OlderDay::newest);

    std::vector<DayGroup> groups;
    for (DayGroup* group : {&ofToday, &ofYesterday})
        if (!group->items.empty())
            groups.push_back(std::move(*group));
    for (OlderDay& day : older)
        groups.push_back(std::move(day.group));
    return groups;
}

} // namespace velmora
