import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A switch. `toggled` says that the user flipped it.
T.Switch {
    id: control

    property alias on: control.checked
    property bool dark: VTheme.dark
    property string label

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property int flipDuration: 180

    function flip() {
        toggle();
        toggled();
        clicked();
    }

    implicitWidth: 38
    implicitHeight: 22
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45

    Accessible.name: label
    Accessible.onPressAction: if (enabled) flip()
    Accessible.onToggleAction: if (enabled) flip()
    Keys.onEnterPressed: flip()
    Keys.onReturnPressed: flip()

    indicator: VRoundedRect {
        width: control.width
        height: control.height
        radius: height / 2
        color: control.on ? control.theme.accent : control.theme.hairlineStrong

        Behavior on color {
            ColorAnimation { duration: control.flipDuration; easing.type: Easing.InOutQuad }
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

            objectName: "knob"
            x: 2 + control.visualPosition * (control.width - width - 4)
            y: 2
            width: 18
            height: 18
            radius: 9
            color: "white"

            Behavior on x {
                enabled: !control.pressed
                NumberAnimation { duration: control.flipDuration; easing.type: Easing.InOutQuad }
            }
        }
    }

    VFocusRing {
        dark: control.dark
        corner: control.height / 2
        shown: control.visualFocus
    }
}
