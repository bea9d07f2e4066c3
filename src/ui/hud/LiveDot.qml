import QtQuick
import Velmora.Hud

/// The red light of a live microphone.
Item {
    id: dot

    required property real size

    implicitWidth: size
    implicitHeight: size

    GlowingDot {
        anchors.centerIn: parent
        width: implicitWidth
        height: implicitHeight
        diameter: dot.size
        color: "#FF5252"

        SequentialAnimation on pulse {
            running: dot.visible
            loops: Animation.Infinite
            Beat { from: 0.85; to: 1.15 }
            Beat { from: 1.15; to: 0.85 }
        }
    }

    component Beat: NumberAnimation {
        duration: 800
        easing.type: Easing.BezierSpline
        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
    }
}
