import QtQuick
import Velmora.Kit

/// The popup's first row: something round or square, a title over hints, and something at the end.
PopoverButton {
    id: head

    property alias badge: badgeSlot.data
    property alias end: endSlot.data
    required property string title
    property real titleSize: 13
    required property string hint
    property real hintSize: 11
    property string note

    text: title
    Accessible.description: hint

    contentItem: Item {
        implicitHeight: Math.max(badgeSlot.height, texts.height)

        Item {
            id: badgeSlot

            anchors.verticalCenter: parent.verticalCenter
            width: childrenRect.width
            height: childrenRect.height
        }
        Column {
            id: texts

            anchors.verticalCenter: parent.verticalCenter
            x: badgeSlot.width + 10
            width: endSlot.x - x - 8
            spacing: 1

            Text {
                width: parent.width
                text: head.title
                elide: Text.ElideRight
                color: head.theme.text
                font: VFont.display(head.titleSize, VFont.Semibold)
            }
            Text {
                width: parent.width
                text: head.hint
                wrapMode: Text.WordWrap
                color: head.theme.textMuted
                font: VFont.display(head.hintSize)
            }
            Text {
                width: parent.width
                visible: text
                text: head.note
                wrapMode: Text.WordWrap
                color: head.theme.textDim
                font: VFont.display(10)
            }
        }
        Item {
            id: endSlot

            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            width: childrenRect.width
            height: childrenRect.height
        }
    }
}
