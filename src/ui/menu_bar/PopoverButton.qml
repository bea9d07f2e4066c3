import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// What all rows of the popup share: the light under the pointer, and how the keyboard works them.
T.AbstractButton {
    id: button

    property bool dark: VTheme.dark
    readonly property VTheme theme: VTheme.scheme(dark)

    activeFocusOnTab: true
    padding: 10
    implicitWidth: 308
    implicitHeight: topPadding + implicitContentHeight + bottomPadding

    Accessible.role: Accessible.MenuItem
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    background: VRoundedRect {
        radius: 8
        color: button.down ? button.theme.hairlineStrong
             : button.hovered || button.visualFocus ? button.theme.hairline : "transparent"
        borderColor: button.visualFocus ? button.theme.accent : "transparent"
        borderWidth: 1.5
    }
}
