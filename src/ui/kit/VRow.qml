import QtQuick
import Velmora.Kit

/// A settings row: title and hint on the left, its control on the right. A control that has no `label` gets the title for those
/// who listen.
Item {
    id: row

    required property string title
    property string hint
    property bool dark: VTheme.dark
    default property alias content: slot.data

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: 360
    implicitHeight: Math.ceil(Math.max(44, words.height + 20, slot.height + 16))
    width: parent ? parent.width : implicitWidth

    Component.onCompleted: {
        for (let i = 0; i < slot.children.length; ++i)
            if (slot.children[i].label === "")
                slot.children[i].label = Qt.binding(() => row.title);
    }

    Column {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        width: row.width - slot.width - (slot.width > 0 ? 16 : 0)
        spacing: 3

        Text {
            width: parent.width
            text: row.title
            color: row.theme.text
            font: VFont.display(13, VFont.Medium)
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            visible: text !== ""
            text: row.hint
            color: row.theme.textMuted
            font: VFont.display(11.5)
            lineHeight: 1.15
            wrapMode: Text.Wrap
        }
    }
    Row {
        id: slot

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
