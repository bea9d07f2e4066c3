import QtQuick
import Velmora.Kit

/// Tabs as pills, in as many lines as the width asks for. `items` are VPillNavItem, or objects with its fields; `selected` is the
/// id of one. `picked` says that the user went to another.
Flow {
    id: nav

    property var items: []
    property alias selected: choices.selected
    property bool dark: VTheme.dark
    signal picked(string id)

    readonly property VTheme theme: VTheme.scheme(dark)

    /// The keyboard goes to the selected tab, or to the first when none is.
    function takeFocus(reason) {
        pills.itemAt(Math.max(0, choices.index)).forceActiveFocus(reason);
    }

    spacing: 4

    Accessible.role: Accessible.Grouping

    VChoice {
        id: choices

        options: nav.items.map((item) => ({ value: item.id, title: item.label }))
        onPicked: (value) => nav.picked(value)
    }
    Repeater {
        id: pills

        model: nav.items

        VChoiceButton {
            id: pill

            required property var modelData
            readonly property bool hasIcon: modelData.icon !== undefined && modelData.icon >= 0
            readonly property bool hasTint: modelData.tint !== undefined && modelData.tint.valid !== false

            choice: choices
            dark: nav.dark
            implicitHeight: 30
            radius: 15
            leftPadding: 12
            rightPadding: 12

            contentItem: Row {
                spacing: 6

                VIconView {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: pill.hasIcon
                    icon: pill.hasIcon ? pill.modelData.icon : 0
                    size: 14
                    color: pill.hasTint ? pill.modelData.tint : pill.chosen ? nav.theme.text : nav.theme.textMuted
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: pill.text
                    color: pill.chosen ? nav.theme.text : nav.theme.textMuted
                    font: VFont.display(12.5, VFont.Medium)
                }
            }
            background: Item {
                VWash {
                    anchors.fill: parent
                    dark: nav.dark
                    radius: pill.radius
                    hovered: pill.hovered && !pill.chosen
                    down: pill.down && !pill.chosen
                }
                VRoundedRect {
                    anchors.fill: parent
                    visible: pill.chosen
                    radius: pill.radius
                    color: nav.theme.accentSoft
                }
            }
        }
    }
}
