import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// A screen in the sidebar.
FocusScope {
    id: root

    required property int icon
    required property string label
    property bool selected: false
    property bool dark: VTheme.dark
    signal action()

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: 36

    VPlainButton {
        id: button

        anchors.fill: parent
        focus: true
        dark: root.dark
        radius: 9
        opacity: 1 // also under the settings
        text: root.label
        onClicked: root.action()

        Accessible.description: root.selected ? "Открыто" : ""

        contentItem: SidebarRowFace {
            icon: root.icon
            iconSize: 16
            tint: root.selected ? root.theme.accent : root.theme.textMuted
            label: root.label
            color: root.selected || button.hovered ? root.theme.text : root.theme.textMuted
            font: VFont.display(13, root.selected ? VFont.Semibold : VFont.Medium)
        }
        background: VRoundedRect {
            radius: button.radius
            color: root.selected ? root.theme.accentSoft
                                 : button.down ? root.theme.hairlineStrong
                                               : button.hovered ? root.theme.hairline : "transparent"
        }
    }
}
