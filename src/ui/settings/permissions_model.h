#pragma once

#include "core/permission_manager.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The rights that dictation needs, one a row, and the way to each that is missing.
class PermissionsModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the sheet's")
    /// What all of them together mean.
    Q_PROPERTY(QString summary READ summary NOTIFY summaryChanged)

public:
    enum Role { Title = Qt::UserRole, Hint, Granted, StateLabel, ActionLabel };

    explicit PermissionsModel(PermissionManager& perms, QObject* parent = nullptr);

    [[nodiscard]] QString summary() const;

    /// Asks the user for the right of that row, and opens the desktop's settings when that grants nothing or
    /// the right is there already.
    Q_INVOKABLE void act(int row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void summaryChanged();

private:
    [[nodiscard]] bool isGranted(int row) const;
    void request(int row);
    void openSettings(int row);
    void refreshRow(int row);

    PermissionManager& m_perms;
    TaskScope m_tasks;
};

} // namespace velmora
