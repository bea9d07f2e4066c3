import QtQuick
import Velmora.Kit

/// A screen in the sidebar.
VPlainButton {
    id: root

    required property int icon
    required property string label
    property bool selected: false

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: 36
    radius: 9
    text: label

    Accessible.role: Accessible.PageTab
    Accessible.selected: selected
    Accessible.onPressAction: click()

    contentItem: Item {
        VIconView {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            icon: root.icon
            size: 16
            color: root.selected ? root.theme.accent : root.theme.textMuted
        }
        Text {
            x: 40
            width: parent.width - 52
            anchors.verticalCenter: parent.verticalCenter
            text: root.label
            color: root.selected || root.hovered ? root.theme.text : root.theme.textMuted
            font: VFont.display(13, root.selected ? VFont.Semibold : VFont.Medium)
            elide: Text.ElideRight
        }
    }
    background: VRoundedRect {
        radius: root.radius
        color: root.selected ? root.theme.accentSoft
                             : root.down ? root.theme.hairlineStrong
                                         : root.hovered ? root.theme.hairline : "transparent"
    }
}
