#include "core/history_store.h"

#include "foundation/json_coder.h"
#include "foundation/private_file.h"

#include <QFile>

namespace velmora {
namespace {

constexpr json::Coder coder(json::DateForm::ReferenceSeconds);

/// The items of the file, none when it isn't there. Absent when it can't be read.
std::optional<std::vector<HistoryItem>> readItems(const QString& path) {
    QFile file(path);
    if (!file.exists())
        return std::vector<HistoryItem>();
    try {
        if (file.open(QIODevice::ReadOnly))
            return coder.decode<std::vector<HistoryItem>>(file.readAll());
    } catch (const json::DecodingError&) {
    }
    return std::nullopt;
}

} // namespace

HistoryStore::HistoryStore(const QString& folder, QObject* parent)
    : QObject(parent)
    , m_path(folder + QStringLiteral("/history.json")) {
    makePrivateFolder(folder);
    removeUnfinished(m_path);
    std::optional<std::vector<HistoryItem>> stored = readItems(m_path);
    m_isDamaged = !stored;
    m_items = std::move(stored).value_or(std::vector<HistoryItem>());
}

void HistoryStore::add(const HistoryItem& item) {
    m_items.insert(m_items.begin(), item);
    if (m_items.size() > maxItems)
        m_items.resize(maxItems);
    save();
    Q_EMIT itemsChanged();
}

void HistoryStore::remove(const QUuid& id) {
    const auto removed = std::erase_if(m_items, [&id](const HistoryItem& item) { return item.id == id; });
    save();
    if (removed > 0)
        Q_EMIT itemsChanged();
}

// A failed write is dropped: the list in memory stays right, and the next change writes all of it again.
void HistoryStore::save() {
    // Another session may have mended it meanwhile.
    if (std::exchange(m_isDamaged, false) && !readItems(m_path))
        keepDamaged("history", m_path);
    (void)replacePrivateFile(m_path, coder.encode(m_items, QJsonDocument::Indented));
}

} // namespace velmora
