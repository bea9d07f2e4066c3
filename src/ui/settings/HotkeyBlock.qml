import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The hotkey, its capture, and a few to choose from.
Column {
    id: block

    required property HotkeySettingsModel model
    property bool dark: VTheme.dark

    readonly property VTheme theme: VTheme.scheme(dark)

    // Esc ends a capture, and nothing else.
    Keys.onShortcutOverride: (event) => event.accepted = model.capturing && event.key === Qt.Key_Escape
    Keys.onEscapePressed: (event) => {
        event.accepted = model.capturing;
        model.stopCapture();
    }

    Item {
        width: parent.width
        height: Math.max(72, words.height + 20)

        Column {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - capture.width - 20
            spacing: 3

            Text {
                width: parent.width
                text: "Горячая клавиша"
                color: block.theme.text
                font: VFont.display(13, VFont.Medium)
            }
            Text {
                width: parent.width
                text: block.model.hint
                color: block.model.hintWarns ? block.theme.amber
                                             : block.model.capturing ? block.theme.text : block.theme.textMuted
                font: VFont.display(11.5)
                wrapMode: Text.Wrap

                Accessible.role: block.model.hintWarns ? Accessible.AlertMessage : Accessible.StaticText
                Accessible.name: text
            }
            Text {
                width: parent.width
                visible: text !== ""
                text: block.model.note
                color: block.theme.textMuted
                font: VFont.display(11.5)
                elide: Text.ElideRight
            }
        }
        Row {
            id: capture

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 12

            VKeyCap {
                anchors.verticalCenter: parent.verticalCenter
                text: block.model.label
                fontSize: 13
                gradient: block.model.capturing
                dark: block.dark
            }
            VButton {
                anchors.verticalCenter: parent.verticalCenter
                title: block.model.captureTitle
                size: VButtonSize.Sm
                dark: block.dark
                onAction: block.model.toggleCapture()
            }
        }
    }
    Item {
        width: parent.width
        height: quick.height + 12

        Text {
            height: quick.height
            text: "Быстрый выбор:"
            color: block.theme.textMuted
            font: VFont.display(11.5)
            verticalAlignment: Text.AlignVCenter
        }
        VSegmented {
            id: quick

            anchors.right: parent.right
            label: "Быстрый выбор"
            options: block.model.quickChoices
            selected: block.model.chosen
            dark: block.dark
            onConfirmed: (hotkey) => block.model.chosen = hotkey
        }
    }
    VHairline {
        width: parent.width
        visible: block.model.isFn
        dark: block.dark
    }
    VRow {
        visible: block.model.isFn
        title: "Вместо Fn"
        hint: "Свою Fn клавиатуры обычно не отдают — нажимайте эту клавишу"
        dark: block.dark

        VMenu {
            implicitWidth: 180
            options: block.model.fnKeys
            selected: block.model.fnKey
            dark: block.dark
            onPicked: (key) => block.model.fnKey = key
        }
    }
}
