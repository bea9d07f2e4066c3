import QtQuick
import Velmora.Kit

/// A row of the popup: icon, label and a printed shortcut.
Item {
    id: row

    required property string label

    implicitWidth: 308
    implicitHeight: 34

    Text {
        anchors.verticalCenter: parent.verticalCenter
        x: 12
        text: row.label
        color: VTheme.text
        font: VFont.display(13)
    }
}
