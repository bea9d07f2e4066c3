import QtQuick
import Velmora.Kit

/// The icon or mark and the title of a button.
Row {
    id: face

    required property string title
    required property color ink
    required property bool small
    property int icon: -1
    property Component mark: null

    spacing: 6

    Loader {
        anchors.verticalCenter: parent.verticalCenter
        active: face.mark !== null
        visible: active
        sourceComponent: face.mark
    }
    VIconView {
        anchors.verticalCenter: parent.verticalCenter
        visible: face.mark === null && face.icon >= 0
        icon: face.icon
        size: face.small ? 13 : 15
        color: face.ink
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: face.title
        color: face.ink
        font: face.small ? VFont.display(12, VFont.Medium) : VFont.display(13, VFont.Semibold)
    }
}
