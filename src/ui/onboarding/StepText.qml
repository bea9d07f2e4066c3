import QtQuick
import Velmora.Kit

/// What every step begins with: which one it is, what it is called, what it is about.
Column {
    id: root

    required property string caption
    required property string title
    property string spokenTitle: title ///< where what is shown is cut short
    property string text
    property bool dark: VTheme.dark
    property bool centred: false

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property font titleFont: VFont.display(27, VFont.Bold)
    readonly property int alignment: centred ? Text.AlignHCenter : Text.AlignLeft

    Text {
        width: parent.width
        text: root.caption
        color: root.theme.textMuted
        font: VFont.mono(11, VFont.Medium)
        horizontalAlignment: root.alignment

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    VH1 {
        width: parent.width
        topPadding: 10
        text: root.title
        textFormat: Text.PlainText
        dark: root.dark
        font: root.titleFont
        horizontalAlignment: root.alignment
        lineHeight: 1.08
        wrapMode: Text.Wrap

        Accessible.name: root.spokenTitle
    }
    Text {
        width: parent.width
        topPadding: 12
        visible: text !== ""
        text: root.text
        color: root.theme.textMuted
        font: VFont.display(14)
        horizontalAlignment: root.alignment
        lineHeight: 1.28
        wrapMode: Text.Wrap

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
