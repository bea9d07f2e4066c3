import QtQuick
import Velmora.Kit

/// How one dictates, with the key to hold.
Row {
    id: root

    required property string hotkeyLabel
    property bool dark: VTheme.dark

    spacing: 7

    Accessible.role: Accessible.StaticText
    Accessible.name: "%1 %2 %3".arg(before.text).arg(hotkeyLabel).arg(after.text)

    Text {
        id: before

        anchors.verticalCenter: parent.verticalCenter
        text: "Зажми"
        color: VTheme.scheme(root.dark).textMuted
        font: VFont.display(13.5)
    }
    VKeyCap {
        anchors.verticalCenter: parent.verticalCenter
        text: root.hotkeyLabel
        dark: root.dark
    }
    Text {
        id: after

        anchors.verticalCenter: parent.verticalCenter
        text: "в любом приложении и начни говорить."
        color: VTheme.scheme(root.dark).textMuted
        font: VFont.display(13.5)
    }
}
