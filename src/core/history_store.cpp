#include "core/history_store.h"

#include "foundation/json_coder.h"
#include "foundation/private_file.h"

#include <QFile>

namespace velmora {
namespace {

constexpr json::Coder coder(json::DateForm::ReferenceSeconds);

} // namespace

HistoryStore::HistoryStore(const QString& folder, QObject* parent)
    : QObject(parent)
    , m_path(folder + QStringLiteral("/history.json")) {
    makePrivateFolder(folder);
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    try {
        m_items = coder.decode<std::vector<HistoryItem>>(file.readAll());
    } catch (const json::DecodingError&) {
        m_items.clear();
    }
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
void HistoryStore::save() const {
    (void)replacePrivateFile(m_path, coder.encode(m_items, QJsonDocument::Indented));
}

} // namespace velmora
