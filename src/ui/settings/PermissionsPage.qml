import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The rights that dictation needs, and the way to those that are missing.
Column {
    id: root

    required property PermissionsModel permissions
    property bool dark: VTheme.dark

    readonly property VTheme theme: VTheme.scheme(dark)

    Repeater {
        model: root.permissions

        Item {
            id: right

            required property int index
            required property int rightIcon
            required property string title
            required property string hint
            required property string stateLabel
            required property bool granted

            width: root.width
            height: 60

            VIconView {
                y: 22
                icon: right.rightIcon
                size: 18
                color: right.granted ? root.theme.green : root.theme.amber
            }
            Column {
                x: 34
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - x - 130
                spacing: 3

                Text {
                    width: parent.width
                    text: right.title
                    color: root.theme.text
                    font: VFont.display(13, VFont.Medium)
                    elide: Text.ElideRight

                    Accessible.role: Accessible.StaticText
                    Accessible.name: right.title + ": " + right.stateLabel
                }
                Text {
                    width: parent.width
                    text: right.hint
                    color: root.theme.textMuted
                    font: VFont.display(11.5)
                    elide: Text.ElideRight
                }
            }
            Row {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 6
                visible: right.granted

                VIconView {
                    anchors.verticalCenter: parent.verticalCenter
                    icon: VIcon.check
                    size: 13
                    color: root.theme.green
                }
                Text {
                    text: right.stateLabel
                    color: root.theme.textMuted
                    font: VFont.display(12)
                }
            }
            VButton {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: !right.granted
                title: "Разрешить"
                size: VButtonSize.Sm
                dark: root.dark
                onAction: root.permissions.request(right.index)
            }
            VHairline {
                anchors.bottom: parent.bottom
                width: parent.width
                visible: right.index < 2
                dark: root.dark
            }
        }
    }
}
