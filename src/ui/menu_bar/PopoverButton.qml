import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// What all rows of the popup share: the light under the pointer, the ring for the keyboard, a tool tip. `text` is the
/// name for those who listen, to whom only this template is a menu's item.
T.MenuItem {
    id: button

    property bool dark: VTheme.dark
    property string tooltip
    readonly property VTheme theme: VTheme.scheme(dark)

    hoverEnabled: true
    padding: 10
    implicitWidth: 308
    implicitHeight: topPadding + implicitContentHeight + bottomPadding

    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: VWash {
        dark: button.dark
        radius: 8
        hovered: button.hovered || button.visualFocus
        down: button.down
    }

    VFocusRing {
        dark: button.dark
        radius: 8
        anchors.margins: 0
        shown: button.visualFocus
    }
    Loader {
        anchors.fill: parent
        active: button.tooltip !== "" && button.hovered && !button.down
        sourceComponent: VToolTip {
            dark: button.dark
            text: button.tooltip
            Component.onCompleted: open()
        }
    }
}
