import QtQuick
import Velmora.Kit

/// The red light of a live microphone.
Item {
    id: dot

    required property real size

    implicitWidth: size
    implicitHeight: size

    VShadow {
        target: disc
        color: Qt.rgba(1, 82 / 255, 82 / 255, 0.6)
        radius: 6
        cornerRadius: dot.size / 2
        scale: disc.scale
    }
    VRoundedRect {
        id: disc

        anchors.fill: parent
        radius: dot.size / 2
        color: "#FF5252"
        scale: 0.85

        SequentialAnimation on scale {
            loops: Animation.Infinite
            NumberAnimation { from: 0.85; to: 1.15; duration: 800; easing.type: Easing.InOutSine }
            NumberAnimation { from: 1.15; to: 0.85; duration: 800; easing.type: Easing.InOutSine }
        }
    }
}
