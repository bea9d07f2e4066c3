import QtQuick
import Velmora.Kit

/// A colour to choose, with its name; the chosen one has a check and a frame.
VChoiceButton {
    id: swatch

    required property color hue

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: 30
    radius: 15
    leftPadding: 6
    rightPadding: 12

    contentItem: Row {
        spacing: 7

        VRoundedRect {
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            radius: 9
            color: swatch.hue

            VIconView {
                anchors.centerIn: parent
                visible: swatch.chosen
                icon: VIcon.check
                size: 11
                color: swatch.theme.onAccent
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: swatch.text
            color: swatch.chosen ? swatch.theme.text : swatch.theme.textMuted
            font: VFont.display(12, VFont.Medium)
        }
    }
    background: Item {
        VWash {
            anchors.fill: parent
            dark: swatch.dark
            radius: swatch.radius
            hovered: swatch.hovered && !swatch.chosen
            down: swatch.down && !swatch.chosen
        }
        VRoundedRect {
            anchors.fill: parent
            visible: swatch.chosen
            radius: swatch.radius
            color: swatch.theme.inputBg
            borderColor: swatch.theme.hairlineStrong
            borderWidth: 1
        }
    }
}
