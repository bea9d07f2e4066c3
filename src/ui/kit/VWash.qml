import QtQuick
import Velmora.Kit

/// What shows that something can be pressed: a wash of the scheme's ink under the pointer, more of it while it is down.
VRoundedRect {
    property bool dark: VTheme.dark
    property bool hovered: false
    property bool down: false

    color: down ? VTheme.scheme(dark).hairlineStrong : VTheme.scheme(dark).hairline
    opacity: hovered || down ? 1 : 0

    Behavior on opacity {
        NumberAnimation { duration: 100 }
    }
}
