import QtQuick
import Velmora.Kit

/// The rule between two rows. It takes a whole pixel, so that the rows below stay on theirs.
Item {
    property bool dark: VTheme.dark

    width: parent ? parent.width : 0
    height: 1

    VHairline {
        width: parent.width
        dark: parent.dark
    }
}
