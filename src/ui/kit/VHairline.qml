import QtQuick
import Velmora.Kit

/// A rule half a pixel thick, horizontal unless `vertical`.
VRoundedRect {
    property bool dark: VTheme.dark
    property bool vertical: false

    implicitWidth: vertical ? 0.5 : 0
    implicitHeight: vertical ? 0 : 0.5
    color: VTheme.scheme(dark).hairline
}
