import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// A row at the sidebar's foot; `tint` colours its icon.
FocusScope {
    id: root

    required property int icon
    required property string label
    property bool dark: VTheme.dark
    property color tint: theme.textMuted
    signal action()

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: 34

    VPlainButton {
        id: button

        anchors.fill: parent
        focus: true
        dark: root.dark
        radius: 9
        opacity: 1 // also under the settings
        text: root.label
        onClicked: root.action()

        contentItem: SidebarRowFace {
            icon: root.icon
            iconSize: 15
            tint: root.tint
            label: root.label
            color: button.hovered ? root.theme.text : root.theme.textMuted
            font: VFont.display(12.5)
        }
    }
}
