import QtQuick
import Velmora.Kit

/// The settings of a version that has no screens for them.
Column {
    id: root

    required property string path
    property bool dark: VTheme.dark

    spacing: 10

    Text {
        width: parent.width
        text: "Настройки появятся в следующей версии. Пока они лежат в файле:"
        color: VTheme.scheme(root.dark).textMuted
        font: VFont.display(13)
        wrapMode: Text.Wrap

        Accessible.role: Accessible.StaticText
        Accessible.name: text + " " + root.path
    }
    Text {
        width: parent.width
        text: root.path
        color: VTheme.scheme(root.dark).text
        font: VFont.mono(12)
        wrapMode: Text.WrapAnywhere
        textFormat: Text.PlainText
    }
}
