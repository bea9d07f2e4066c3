#pragma once

#include "core/history_store.h"
#include "foundation/main_loop.h"
#include "platform/pasteboard.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// What the history screen reads and works on.
class HistorySource : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")

public:
    HistorySource(HistoryStore& store, const MainLoop& loop, Pasteboard& pasteboard,
                  QObject* parent = nullptr)
        : QObject(parent)
        , m_store(store)
        , m_loop(loop)
        , m_pasteboard(pasteboard) {
        connect(&store, &HistoryStore::itemsChanged, this, &HistorySource::changed);
    }

    [[nodiscard]] const std::vector<HistoryItem>& items() const { return m_store.items(); }
    [[nodiscard]] Date now() const { return m_loop.date(); }
    void remove(const QUuid& id) { m_store.remove(id); }
    Q_INVOKABLE void copy(const QString& text) {
        m_pasteboard.clearContents();
        m_pasteboard.setString(text);
    }

Q_SIGNALS:
    /// The items are others, or time has passed: what is shown is to be read again.
    void changed();

private:
    HistoryStore& m_store;
    const MainLoop& m_loop;
    Pasteboard& m_pasteboard;
};

} // namespace velmora
