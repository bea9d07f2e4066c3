#pragma once

#include "core/history_item.h"

#include <QObject>

#include <vector>

namespace velmora {

/// The latest dictations, newest first, in one JSON file that is rewritten whole at every change.
class HistoryStore : public QObject {
    Q_OBJECT

public:
    static constexpr std::size_t maxItems = 200;

    /// Reads "history.json" in `folder`, which is made if needed. A file that can't be read gives an empty
    /// list, and is set aside with ".damaged" at its name at the next change.
    explicit HistoryStore(const QString& folder, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<HistoryItem>& items() const { return m_items; }

    void add(const HistoryItem& item);
    void remove(const QUuid& id);

Q_SIGNALS:
    void itemsChanged();

private:
    void save();

    QString m_path;
    bool m_isDamaged; // the file, until it is written again
    std::vector<HistoryItem> m_items;
};

} // namespace velmora
