import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A value between `from` and `to`. With `gradient` the part up to it is filled with the brand's gradient.
T.Slider {
    id: slider

    property bool dark: VTheme.dark
    property bool gradient: false
    property string label

    // The range under the names that assistive technology asks for.
    readonly property real minimumValue: from
    readonly property real maximumValue: to
    readonly property VTheme theme: VTheme.scheme(dark)

    function stepBy(step) {
        if (!enabled)
            return;
        step();
        moved();
    }

    implicitWidth: 160
    implicitHeight: 22
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45

    Accessible.name: label
    Accessible.onIncreaseAction: stepBy(() => increase())
    Accessible.onDecreaseAction: stepBy(() => decrease())

    background: VRoundedRect {
        y: (slider.height - height) / 2
        width: slider.width
        height: 4
        radius: 2
        color: slider.theme.hairlineStrong

        VRoundedRect {
            width: Math.max(knob.x + knob.width / 2, 0)
            height: parent.height
            radius: 2
            color: slider.theme.accent
            gradientEnd: slider.gradient ? slider.theme.brandGradientStrongEnd : undefined
        }
    }
    handle: Item {
        id: knob

        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
        width: 16
        height: 16

        VShadow {
            target: disc
            color: Qt.rgba(0, 0, 0, 0.3)
            radius: 4
            cornerRadius: 8
            offsetY: 1
        }
        VRoundedRect {
            id: disc

            anchors.fill: parent
            radius: 8
            color: "white"
            borderColor: slider.pressed || slider.hovered ? slider.theme.accent : slider.theme.hairlineStrong
            borderWidth: slider.pressed ? 2 : 1
        }
        VFocusRing {
            dark: slider.dark
            corner: 8
            shown: slider.visualFocus
        }
    }
}
