import QtQuick
import Velmora.Kit

/// The meetings' screen of a version that doesn't record them.
Item {
    id: root

    property bool dark: VTheme.dark

    Column {
        anchors.centerIn: parent
        width: parent.width - 40
        spacing: 16

        VIconView {
            anchors.horizontalCenter: parent.horizontalCenter
            icon: VIcon.micFill
            size: 36
            color: VTheme.scheme(root.dark).textDim
        }
        Text {
            width: parent.width
            text: "В этой версии записи созвонов ещё нет."
            color: VTheme.scheme(root.dark).textMuted
            font: VFont.display(13.5)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
