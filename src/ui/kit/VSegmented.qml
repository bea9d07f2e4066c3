import QtQuick
import Velmora.Kit

/// One of a few options that are all in sight. With `gradient` the chosen one is filled with the brand's gradient. `picked` says
/// that the user chose another.
VRoundedRect {
    id: root

    property alias options: choices.options
    property alias selected: choices.selected
    property bool dark: VTheme.dark
    property bool gradient: false
    property string label
    signal picked(var option)
    /// The user took that option, be it the chosen one.
    signal confirmed(var option)

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: row.width + 4
    implicitHeight: 30
    radius: 8
    color: theme.inputBg
    borderColor: theme.hairlineStrong
    borderWidth: 1
    opacity: enabled ? 1 : 0.45

    Accessible.role: Accessible.Grouping
    Accessible.name: label

    VChoice {
        id: choices

        onPicked: (value) => root.picked(value)
        onConfirmed: (value) => root.confirmed(value)
    }
    Row {
        id: row

        x: 2
        y: 2

        Repeater {
            model: choices.titles

            VChoiceButton {
                id: segment

                choice: choices
                dark: root.dark
                height: root.height - 4
                radius: 6
                leftPadding: 12
                rightPadding: 12

                contentItem: Text {
                    text: segment.text
                    color: !segment.chosen ? root.theme.textMuted
                                           : root.gradient ? root.theme.onAccent : root.theme.text
                    font: VFont.display(12, VFont.Medium)
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                background: Item {
                    VWash {
                        anchors.fill: parent
                        dark: root.dark
                        radius: segment.radius
                        hovered: segment.hovered && !segment.chosen
                        down: segment.down && !segment.chosen
                    }
                    VRoundedRect {
                        anchors.fill: parent
                        visible: segment.chosen
                        radius: segment.radius
                        color: root.gradient ? root.theme.accent : root.theme.hairlineStrong
                        gradientEnd: root.gradient ? root.theme.brandGradientEnd : undefined
                    }
                }
            }
        }
    }
}
