import QtQuick
import Velmora.Kit

/// What all rows of the popup share.
VPlainButton {
    readonly property VTheme theme: VTheme.scheme(dark)

    padding: 10
    implicitWidth: 308

    Accessible.role: Accessible.MenuItem
}
