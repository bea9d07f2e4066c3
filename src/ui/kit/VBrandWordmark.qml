import QtQuick
import Velmora.Kit

/// The program's name as it is written beside its mark.
Text {
    property bool dark: VTheme.dark
    property real size: 16

    text: "Velmora"
    color: VTheme.scheme(dark).text
    font: VFont.display(size, VFont.Bold)

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
