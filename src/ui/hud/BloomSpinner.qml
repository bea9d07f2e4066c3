import QtQuick
import Velmora.Hud

/// Something is being worked on.
Item {
    id: spinner

    required property real size
    required property color accent

    implicitWidth: size
    implicitHeight: size

    SpinnerArc {
        anchors.centerIn: parent
        width: implicitWidth
        height: implicitHeight
        diameter: spinner.size
        accent: spinner.accent

        NumberAnimation on angle {
            running: spinner.visible
            loops: Animation.Infinite
            from: 0
            to: 360
            duration: 800
        }
    }
}
