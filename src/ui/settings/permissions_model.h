#pragma once

#include "core/permission_manager.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The rights that dictation needs, one a row, and the way to each that is missing.
class PermissionsModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")

public:
    enum Role { Title = Qt::UserRole, Hint, Granted, StateLabel, Icon };

    explicit PermissionsModel(PermissionManager& perms, QObject* parent = nullptr);

    /// Asks the user for the right of that row; opens the desktop's settings when that grants nothing.
    Q_INVOKABLE void request(int row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    [[nodiscard]] bool isGranted(int row) const;
    void refreshRow(int row);

    PermissionManager& m_perms;
    TaskScope m_tasks;
};

} // namespace velmora
