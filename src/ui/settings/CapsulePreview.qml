import QtQuick
import Velmora.Hud
import Velmora.Kit

/// The capsule as it would be now, on a picture of a screen.
VRoundedRect {
    id: screen

    required property RecordingHUDModel capsule
    /// Where the capsule's panel begins.
    required property real capsuleY
    property bool dark: VTheme.dark

    readonly property VTheme theme: VTheme.scheme(dark)

    radius: 10
    color: theme.surface
    borderColor: theme.hairlineStrong
    borderWidth: 1

    Item {
        anchors.fill: parent
        anchors.margins: 1
        clip: true

        // The program that one dictates into.
        VRoundedRect {
            id: page

            anchors.horizontalCenter: parent.horizontalCenter
            y: 22
            width: Math.round(parent.width * 0.56)
            height: parent.height
            radius: 8
            color: screen.theme.surface
            borderColor: screen.theme.hairline
            borderWidth: 1

            Repeater {
                model: [0.42, 0.78, 0.7, 0.74, 0.3]

                VRoundedRect {
                    required property int index
                    required property real modelData

                    x: 20
                    y: 18 + index * 16
                    width: Math.round(page.width * modelData)
                    height: 5
                    radius: 2.5
                    color: screen.theme.hairline
                }
            }
        }
        RecordingHUD {
            objectName: "capsule"
            anchors.horizontalCenter: parent.horizontalCenter
            y: screen.capsuleY - 1
            width: implicitWidth
            height: implicitHeight
            model: screen.capsule

            Behavior on y {
                NumberAnimation { duration: 180; easing.type: Easing.OutCubic }
            }
        }
    }
}
