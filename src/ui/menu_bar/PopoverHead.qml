import QtQuick
import Velmora.Kit

/// The popup's first row: a badge, a title over hints, and something at the end. Its height follows its texts at once, so
/// that the popup knows its size before it is shown.
PopoverButton {
    id: head

    default property alias badge: badgeSlot.data
    required property real badgeSize
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
            width: head.badgeSize
            height: head.badgeSize
        }
        Item {
            id: texts

            anchors.verticalCenter: parent.verticalCenter
            x: head.badgeSize + 10
            width: endSlot.x - x - 8
            height: Math.ceil(head.note ? noteText.y + noteText.height : hintText.y + hintText.height)

            Text {
                id: titleText

                width: parent.width
                text: head.title
                elide: Text.ElideRight
                color: head.theme.text
                font: VFont.display(head.titleSize, VFont.Semibold)
            }
            Text {
                id: hintText

                anchors.top: titleText.bottom
                anchors.topMargin: 1
                width: parent.width
                text: head.hint
                wrapMode: Text.WordWrap
                color: head.theme.textMuted
                font: VFont.display(head.hintSize)
            }
            Text {
                id: noteText

                anchors.top: hintText.bottom
                anchors.topMargin: 1
                width: parent.width
                visible: text !== ""
                text: head.note
                wrapMode: Text.WordWrap
                color: head.theme.textMuted
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
