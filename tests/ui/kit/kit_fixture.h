#pragma once

#include "support/ui/view_host.h"

#include <gmock/gmock.h>

namespace velmora::test {

/// Controls on an empty page of 480 by 240, whose `note` they may set.
class KitTest : public testing::Test {
protected:
    void showControls(const QByteArray& qml) {
        host.showSource("import QtQuick\nimport Velmora.Kit\n"
                        "Item { id: page; implicitWidth: 480; implicitHeight: 240; property var note: ''; "
                        "property int count: 0\n" +
                        qml + "\n}");
    }
    [[nodiscard]] QVariant note() const { return host.root()->property("note"); }
    [[nodiscard]] int count() const { return host.root()->property("count").toInt(); }
    [[nodiscard]] QQuickItem* item(const char* objectName) const {
        return host.find(QLatin1String(objectName));
    }
    [[nodiscard]] static QAccessible::State stateOf(QQuickItem* control) {
        return QAccessible::queryAccessibleInterface(control)->state();
    }
    /// Presses it as assistive technology does.
    static void pressAloud(QQuickItem* control) {
        QAccessibleActionInterface* actions =
            QAccessible::queryAccessibleInterface(control)->actionInterface();
        ASSERT_TRUE(actions);
        const QStringList names = actions->actionNames();
        for (const QString& action :
             {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
            if (names.contains(action)) {
                actions->doAction(action);
                return;
            }
        }
        ADD_FAILURE() << "can't be pressed";
    }

    ViewHost host;
};

} // namespace velmora::test
