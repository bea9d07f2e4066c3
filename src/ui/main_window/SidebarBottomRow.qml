import QtQuick
import Velmora.Kit

/// A row at the sidebar's foot; `tint` colours its icon.
VPlainButton {
    id: root

    required property int icon
    required property string label
    property color tint: theme.textMuted

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: 34
    radius: 9
    text: label

    contentItem: Item {
        VIconView {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            icon: root.icon
            size: 15
            color: root.tint
        }
        Text {
            x: 40
            width: parent.width - 52
            anchors.verticalCenter: parent.verticalCenter
            text: root.label
            color: root.hovered ? root.theme.text : root.theme.textMuted
            font: VFont.display(12.5)
            elide: Text.ElideRight
        }
    }
}
