import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A switch. `toggled` says that the user flipped it.
T.Switch {
    id: toggle

    property alias on: toggle.checked
    property bool dark: VTheme.dark
    property string label

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property int flipDuration: 180

    implicitWidth: 38
    implicitHeight: 22
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45

    Accessible.name: label
    Keys.onEnterPressed: click()
    Keys.onReturnPressed: click()

    indicator: VRoundedRect {
        width: toggle.width
        height: toggle.height
        radius: height / 2
        color: toggle.on ? toggle.theme.accent : toggle.theme.hairlineStrong

        Behavior on color {
            ColorAnimation { duration: toggle.flipDuration; easing.type: Easing.InOutQuad }
        }

        VShadow {
            target: knob
            color: Qt.rgba(0, 0, 0, 0.3)
            radius: 4
            cornerRadius: 9
            offsetY: 1
        }
        VRoundedRect {
            id: knob

            x: 2 + toggle.visualPosition * (toggle.width - width - 4)
            y: 2
            width: 18
            height: 18
            radius: 9
            color: "white"

            Behavior on x {
                enabled: !toggle.pressed
                NumberAnimation { duration: toggle.flipDuration; easing.type: Easing.InOutQuad }
            }
        }
    }

    VFocusRing {
        dark: toggle.dark
        corner: toggle.height / 2
        shown: toggle.visualFocus
    }
}
