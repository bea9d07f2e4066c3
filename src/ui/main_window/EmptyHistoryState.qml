import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// What stands where there is nothing to list; `hiddenLabel` says what filter and search keep back.
Item {
    id: root

    required property string hotkeyLabel
    property string hotkeyNote
    property string hiddenLabel
    property bool dark: VTheme.dark
    signal showAll()

    readonly property VTheme theme: VTheme.scheme(dark)

    Column {
        anchors.centerIn: parent
        width: parent.width - 40
        spacing: 0

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 130
            height: 130

            VShadow {
                target: glow
                color: root.theme.accent
                radius: 48
                cornerRadius: 65
                hollow: false
                opacity: 0.35
            }
            Item {
                id: glow

                anchors.fill: parent
            }
            VShadow {
                target: disc
                color: Qt.alpha(root.theme.accent, 0.45)
                radius: 22
                cornerRadius: 40
                offsetY: 8
            }
            VRoundedRect {
                id: disc

                anchors.centerIn: parent
                width: 80
                height: 80
                radius: 40
                color: root.theme.accent

                VIconView {
                    anchors.centerIn: parent
                    icon: VIcon.micFill
                    size: 32
                    color: root.theme.onAccent
                }
            }
        }
        Item {
            width: 1
            height: 22
        }
        VH1 {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Пока ничего не записано"
            dark: root.dark
        }
        Item {
            width: 1
            height: 12
        }
        HotkeyHint {
            anchors.horizontalCenter: parent.horizontalCenter
            hotkeyLabel: root.hotkeyLabel
            dark: root.dark
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 8
            visible: text !== ""
            text: root.hotkeyNote
            color: root.theme.textMuted
            font: VFont.display(12)
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 22
            spacing: 8
            visible: root.hiddenLabel !== ""

            Text {
                height: showAll.height
                text: root.hiddenLabel
                color: root.theme.textMuted
                font: VFont.display(12)
                verticalAlignment: Text.AlignVCenter
            }
            VButton {
                id: showAll

                title: "Показать всё"
                size: VButtonSize.Sm
                dark: root.dark
                onAction: root.showAll()
            }
        }
    }
}
