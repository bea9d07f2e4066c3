import QtQuick
import Velmora.Kit

/// A row of the popup: icon, label and a printed shortcut.
PopoverButton {
    id: row

    /// Of the icon table; -1 for none.
    property int symbol: -1
    required property string label
    property string shortcut
    property bool muted: false

    verticalPadding: 8
    text: label

    contentItem: Item {
        implicitHeight: 18

        VIconView {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            visible: row.symbol >= 0
            icon: row.symbol
            size: 16
            color: row.muted ? row.theme.textMuted : row.theme.text
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            x: icon.visible ? icon.width + 10 : 0
            width: shortcut.x - x - 8
            text: row.label
            elide: Text.ElideRight
            color: row.muted ? row.theme.textMuted : row.theme.text
            font: VFont.display(13)
        }
        Text {
            id: shortcut

            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            text: row.shortcut
            color: row.theme.textDim
            font: VFont.display(12)
        }
    }
}
