import QtQuick
import Velmora.Kit

/// The ring around the control it lies in, for those who go by keyboard. `corner` is the radius of the control's corners.
VRoundedRect {
    property bool dark: VTheme.dark
    property bool shown: false
    property real corner: 8

    anchors.fill: parent
    anchors.margins: -3.5
    radius: corner + 3.5
    borderWidth: 1.5
    borderColor: VTheme.scheme(dark).accent
    visible: shown
}
