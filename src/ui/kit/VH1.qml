import QtQuick
import Velmora.Kit

/// The heading of a screen.
Text {
    property bool dark: VTheme.dark

    color: VTheme.scheme(dark).text
    font: VFont.display(22, VFont.Bold)
    elide: Text.ElideRight

    Accessible.role: Accessible.Heading
    Accessible.name: text
}
