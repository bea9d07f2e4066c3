import QtQuick
import Velmora.Kit

/// The icon and the label of a row in the sidebar.
Item {
    id: root

    required property int icon
    required property real iconSize
    required property color tint
    required property string label
    property alias color: words.color
    property alias font: words.font

    VIconView {
        x: 20 - Math.round(width / 2)
        anchors.verticalCenter: parent.verticalCenter
        icon: root.icon
        size: root.iconSize
        color: root.tint
    }
    Text {
        id: words

        x: 40
        width: parent.width - 52
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
        elide: Text.ElideRight
    }
}
