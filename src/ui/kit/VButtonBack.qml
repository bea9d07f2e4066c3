import QtQuick
import Velmora.Kit

/// The shape under a button.
Item {
    id: back

    required property bool dark
    required property bool primary
    required property bool ghost
    required property bool hovered
    required property bool down
    required property real radius
    readonly property VTheme theme: VTheme.scheme(dark)

    VRoundedRect {
        anchors.fill: parent
        visible: back.primary
        radius: back.radius
        color: back.theme.accent
        gradientEnd: back.hovered && !back.down ? back.theme.brandGradientStrongEnd : back.theme.brandGradientEnd
    }
    VRoundedRect {
        anchors.fill: parent
        visible: !back.primary && !back.ghost
        radius: back.radius
        color: back.theme.inputBg
        borderColor: back.theme.hairlineStrong
        borderWidth: 1
    }
    VWash {
        anchors.fill: parent
        dark: back.dark
        radius: back.radius
        hovered: back.hovered && !back.primary
        down: back.down
    }
}
