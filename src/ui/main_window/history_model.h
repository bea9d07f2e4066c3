#pragma once

#include "ui/main_window/expanded_history.h"
#include "ui/main_window/history_groups.h"
#include "ui/main_window/history_source.h"

#include <QAbstractListModel>
#include <QPointer>

namespace velmora {

/// The rows of the history screen: the items that filter and search leave, the first of each day carrying the
/// day's title. A change touches only the rows that differ, so the list keeps its place.
class HistoryModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmora::HistorySource* source READ source WRITE setSource NOTIFY sourceChanged REQUIRED)
    Q_PROPERTY(QStringList filterOptions READ filterOptions CONSTANT)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    /// Nothing to show.
    Q_PROPERTY(bool empty READ isEmpty NOTIFY emptyChanged)
    /// How many items filter and search hide, as a sentence; empty when they hide none.
    Q_PROPERTY(QString hiddenLabel READ hiddenLabel NOTIFY hiddenLabelChanged)
    /// Whether an item is open, and its texts.
    Q_PROPERTY(bool hasExpanded READ hasExpanded NOTIFY expandedChanged)
    Q_PROPERTY(velmora::ExpandedHistory expanded READ expanded NOTIFY expandedChanged)

public:
    enum Role {
        SectionTitle = Qt::UserRole, ///< of the day that begins with this row, else empty
        SectionCount,
        Time,
        Tag,
        Preview,
        Duration,
        RowName, ///< for those who hear the window
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] HistorySource* source() const { return m_source; }
    void setSource(HistorySource* source);
    [[nodiscard]] QStringList filterOptions() const { return historyFilters(); }
    [[nodiscard]] QString filter() const { return m_filter; }
    void setFilter(const QString& filter);
    [[nodiscard]] QString search() const { return m_search; }
    void setSearch(const QString& search);
    [[nodiscard]] bool isEmpty() const { return m_rows.empty(); }
    [[nodiscard]] QString hiddenLabel() const { return m_hiddenLabel; }
    [[nodiscard]] bool hasExpanded() const { return m_expandedItem.has_value(); }
    [[nodiscard]] ExpandedHistory expanded() const { return m_expanded; }

    Q_INVOKABLE void showAll();
    /// Opens the item of the row.
    Q_INVOKABLE void expand(int row);
    Q_INVOKABLE void collapse();
    /// Copies the cleaned text of the row; false when there is no such row.
    Q_INVOKABLE bool copyRow(int row);
    /// These work on the open item.
    Q_INVOKABLE void copyCleaned();
    Q_INVOKABLE void copyRaw();
    Q_INVOKABLE void removeExpanded();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void sourceChanged();
    void filterChanged();
    void searchChanged();
    void emptyChanged();
    void hiddenLabelChanged();
    void expandedChanged();

private:
    struct Row {
        HistoryItem item;
        QString sectionTitle;
        qsizetype sectionCount = 0;

        bool operator==(const Row&) const = default;
    };

    void refresh();
    [[nodiscard]] static std::vector<Row> rowsOf(const std::vector<DayGroup>& groups);
    void adopt(const std::vector<Row>& rows);
    void removeRows(std::size_t first, std::size_t last);
    void refreshExpanded(Date now);
    void setExpandedItem(std::optional<HistoryItem> item);

    QPointer<HistorySource> m_source;
    QString m_filter = historyFilters().constFirst();
    QString m_search;
    std::vector<Row> m_rows;
    QString m_hiddenLabel;
    std::optional<HistoryItem> m_expandedItem;
    ExpandedHistory m_expanded;
};

} // namespace velmora
