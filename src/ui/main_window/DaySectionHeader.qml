import QtQuick
import Velmora.Kit

/// The title of a day, and how many dictations it has.
Item {
    id: root

    required property string title
    required property string count
    property bool dark: VTheme.dark

    Text {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 10
        text: root.title
        color: VTheme.scheme(root.dark).text
        font: VFont.display(13, VFont.Semibold)

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Text {
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 10
        text: root.count
        color: VTheme.scheme(root.dark).textDim
        font: VFont.mono(11)
    }
}
