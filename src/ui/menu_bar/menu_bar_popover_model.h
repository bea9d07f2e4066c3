#pragma once

#include "ui/menu_bar/popover_row.h"

#include <QtQml/qqmlregistration.h>

namespace velmora {

/// What one popup shows. It is made at each opening and doesn't change.
class MenuBarPopoverModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("each popup has its own")
    Q_PROPERTY(QString hotkeyLabel READ hotkeyLabel CONSTANT)
    /// Which key plays Fn where the label is "Fn"; may be empty.
    Q_PROPERTY(QString standInNote READ standInNote CONSTANT)
    /// Whether the head is the record row, not the warning.
    Q_PROPERTY(bool canRecord READ canRecord CONSTANT)
    Q_PROPERTY(QString recordHint READ recordHint CONSTANT)
    Q_PROPERTY(QString warningHint READ warningHint CONSTANT)
    Q_PROPERTY(velmora::PopoverRow::Action headAction READ headAction CONSTANT)
    Q_PROPERTY(QList<velmora::PopoverRow> rows READ rows CONSTANT)

public:
    struct Snapshot {
        QString hotkeyLabel = {};
        QString standInNote = {};
        bool hotkeyActive = false;
        bool inputMonitoringGranted = false;
        bool accessibilityGranted = false;
    };

    explicit MenuBarPopoverModel(Snapshot snapshot, QObject* parent = nullptr)
        : QObject(parent)
        , m_snapshot(std::move(snapshot)) {}

    [[nodiscard]] QString hotkeyLabel() const { return m_snapshot.hotkeyLabel; }
    [[nodiscard]] QString standInNote() const { return m_snapshot.standInNote; }
    [[nodiscard]] bool canRecord() const;
    [[nodiscard]] QString recordHint() const;
    [[nodiscard]] QString warningHint() const;
    [[nodiscard]] PopoverAction headAction() const;
    [[nodiscard]] QList<PopoverRow> rows() const { return standardPopoverRows(); }

Q_SIGNALS:
    /// The user has picked an entry.
    void chosen(velmora::PopoverRow::Action action);
    /// The user wants it gone.
    void dismissed();

private:
    const Snapshot m_snapshot;
};

} // namespace velmora
