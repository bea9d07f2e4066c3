import QtQuick
import Velmora.Kit

/// What stands between the items of a line.
VRoundedRect {
    property bool dark: VTheme.dark

    anchors.verticalCenter: parent.verticalCenter
    implicitWidth: 3
    implicitHeight: 3
    radius: 1.5
    color: VTheme.scheme(dark).textDim
}
