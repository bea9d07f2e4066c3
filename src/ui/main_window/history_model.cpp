#include "ui/main_window/history_model.h"

#include "ui/main_window/history_texts.h"

#include <QSet>

namespace velmora {

void HistoryModel::setSource(HistorySource* source) {
    if (source == m_source)
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    if (m_source)
        connect(m_source, &HistorySource::changed, this, &HistoryModel::refresh);
    refresh();
    Q_EMIT sourceChanged();
}

void HistoryModel::setFilter(const QString& filter) {
    if (std::exchange(m_filter, filter) == filter)
        return;
    refresh();
    Q_EMIT filterChanged();
}

void HistoryModel::setSearch(const QString& search) {
    if (std::exchange(m_search, search) == search)
        return;
    refresh();
    Q_EMIT searchChanged();
}

void HistoryModel::showAll() {
    setFilter(filterOfAll());
    setSearch({});
}

void HistoryModel::expand(int row) {
    if (row < 0 || row >= rowCount())
        return;
    setExpandedItem(m_rows[static_cast<std::size_t>(row)].item);
}

void HistoryModel::collapse() {
    setExpandedItem({});
}

bool HistoryModel::copyRow(int row) {
    if (row < 0 || row >= rowCount())
        return false;
    m_source->copy(m_rows[static_cast<std::size_t>(row)].item.cleanedText);
    return true;
}

void HistoryModel::copyCleaned() {
    if (m_expandedItem && m_source)
        m_source->copy(m_expandedItem->cleanedText);
}

void HistoryModel::copyRaw() {
    if (m_expandedItem && m_source)
        m_source->copy(m_expandedItem->rawText);
}

void HistoryModel::removeExpanded() {
    if (!m_expandedItem || !m_source)
        return;
    m_source->remove(m_expandedItem->id);
    collapse();
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case SectionTitle:
        return row.sectionTitle;
    case SectionCount:
        return QString::number(row.sectionCount);
    case Time:
        return timeLabel(row.item.date);
    case Tag:
        return tagForBundle(row.item.appBundleId).name;
    case Preview:
        return rowPreview(row.item.cleanedText);
    case Duration:
        return shortDuration(row.item.durationSec);
    case RowName:
        return QStringLiteral("%1, %2, %3")
            .arg(timeLabel(row.item.date), tagForBundle(row.item.appBundleId).name,
                 rowPreview(row.item.cleanedText));
    default:
        return {};
    }
}

QHash<int, QByteArray> HistoryModel::roleNames() const {
    return {{SectionTitle, "sectionTitle"}, {SectionCount, "sectionCount"}, {Time, "time"},      {Tag, "tag"},
            {Preview, "preview"},           {Duration, "duration"},         {RowName, "rowName"}};
}

void HistoryModel::refresh() {
    const bool wasEmpty = isEmpty();
    qsizetype hidden = 0;
    if (m_source) {
        const Date now = m_source->now();
        const auto shown = filtered(m_source->items(), m_filter, m_search, now);
        hidden = std::ssize(m_source->items()) - std::ssize(shown);
        adopt(rowsOf(groupedByDay(shown, now)));
        refreshExpanded(now);
    } else {
        adopt({});
        collapse();
    }
    const QString label = hiddenItemsLabel(hidden, m_filter != filterOfAll(), !m_search.isEmpty());
    if (std::exchange(m_hiddenLabel, label) != label)
        Q_EMIT hiddenLabelChanged();
    if (wasEmpty != isEmpty())
        Q_EMIT emptyChanged();
}

std::vector<HistoryModel::Row> HistoryModel::rowsOf(const std::vector<DayGroup>& groups) {
    std::vector<Row> rows;
    for (const DayGroup& group : groups) {
        for (const HistoryItem& item : group.items)
            rows.push_back({item, {}, 0});
        Row& first = rows[rows.size() - group.items.size()];
        first.sectionTitle = group.day;
        first.sectionCount = std::ssize(group.items);
    }
    return rows;
}

// Rows are known by their items. Their order hardly ever changes, so a row that stands elsewhere now is taken
// out here and put in there.
void HistoryModel::adopt(const std::vector<Row>& rows) {
    QSet<QUuid> wanted;
    QSet<QUuid> present;
    for (const Row& row : rows)
        wanted.insert(row.item.id);
    for (const Row& row : m_rows)
        present.insert(row.item.id);

    for (std::size_t i = 0; i < rows.size() || i < m_rows.size();) {
        const auto unwanted = [&](std::size_t at) {
            return at < m_rows.size() && (i >= rows.size() || !wanted.contains(m_rows[at].item.id));
        };
        const auto missing = [&](std::size_t at) {
            return at < rows.size() && (i >= m_rows.size() || !present.contains(rows[at].item.id));
        };
        if (unwanted(i)) {
            std::size_t last = i;
            while (unwanted(last + 1))
                ++last;
            removeRows(i, last);
        } else if (missing(i)) {
            std::size_t last = i;
            while (missing(last + 1))
                ++last;
            beginInsertRows({}, static_cast<int>(i), static_cast<int>(last));
            m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(i),
                          rows.begin() + static_cast<std::ptrdiff_t>(i),
                          rows.begin() + static_cast<std::ptrdiff_t>(last) + 1);
            endInsertRows();
            i = last + 1;
        } else if (m_rows[i].item.id != rows[i].item.id) {
            present.remove(m_rows[i].item.id);
            removeRows(i, i);
        } else {
            if (m_rows[i] != rows[i]) {
                m_rows[i] = rows[i];
                const QModelIndex changed = index(static_cast<int>(i));
                Q_EMIT dataChanged(changed, changed);
            }
            ++i;
        }
    }
}

void HistoryModel::removeRows(std::size_t first, std::size_t last) {
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(last));
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(first),
                 m_rows.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    endRemoveRows();
}

// An open item that is gone from the store closes; one that only the filter hides stays.
void HistoryModel::refreshExpanded(Date now) {
    if (!m_expandedItem)
        return;
    const auto& items = m_source->items();
    const auto found = std::ranges::find(items, m_expandedItem->id, &HistoryItem::id);
    if (found == items.end())
        return collapse();
    const QString date = dateLabel(m_expandedItem->date, now);
    if (std::exchange(m_expanded.dateLabel, date) != date)
        Q_EMIT expandedChanged();
}

void HistoryModel::setExpandedItem(std::optional<HistoryItem> item) {
    if (!item && !m_expandedItem)
        return;
    m_expandedItem = std::move(item);
    m_expanded = {};
    if (m_expandedItem && m_source) {
        const qsizetype words = wordCount(m_expandedItem->cleanedText);
        m_expanded = {dateLabel(m_expandedItem->date, m_source->now()),
                      longDuration(m_expandedItem->durationSec),
                      QString::number(words),
                      wordsLabel(words),
                      m_expandedItem->cleanedText,
                      m_expandedItem->rawText};
    }
    Q_EMIT expandedChanged();
}

} // namespace velmora
