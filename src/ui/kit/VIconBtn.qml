import QtQuick
import Velmora.Kit

/// A square button with an icon; red when `danger`. Those who listen hear its tool tip, or `label` where it has none.
FocusScope {
    id: root

    required property int icon
    property bool dark: VTheme.dark
    property bool danger: false
    property string tooltip
    property string label: tooltip
    property int tooltipDelay: 600
    property real iconSize: 15
    signal action()

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: 28
    implicitHeight: 28

    VPlainButton {
        id: button

        anchors.fill: parent
        focus: true
        dark: root.dark
        text: root.label
        tooltip: root.tooltip
        tooltipDelay: root.tooltipDelay
        onClicked: root.action()

        contentItem: Item {
            VIconView {
                anchors.centerIn: parent
                icon: root.icon
                size: root.iconSize
                color: root.danger ? root.theme.red : button.hovered ? root.theme.text : root.theme.textMuted
            }
        }
    }
}
