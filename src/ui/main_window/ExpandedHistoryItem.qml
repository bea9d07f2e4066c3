import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// One dictation with all its text.
FocusScope {
    id: root

    required property expandedHistory item
    property bool dark: VTheme.dark
    signal copyCleaned()
    signal copyRaw()
    signal copySelection(string selection)
    signal removed()
    signal closed()

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property bool sideBySide: width >= 600

    Accessible.role: Accessible.Grouping
    Accessible.name: "Диктовка: " + item.dateLabel

    Item {
        id: header

        width: parent.width
        height: 32

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 10

            Text {
                text: root.item.dateLabel
                color: root.theme.textMuted
                font: VFont.display(13)
            }
            MetaDot {
                dark: root.dark
            }
            Text {
                text: root.item.duration
                color: root.theme.textDim
                font: VFont.mono(13)
            }
            MetaDot {
                dark: root.dark
            }
            Text {
                text: root.item.wordCount
                color: root.theme.textDim
                font: VFont.mono(13)

                Accessible.role: Accessible.StaticText
                Accessible.name: root.item.wordCountName
            }
        }
        VIconBtn {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            icon: VIcon.xMark
            tooltip: "Закрыть"
            dark: root.dark
            onAction: root.closed()
        }
    }

    Item {
        id: panes

        anchors.top: header.bottom
        anchors.topMargin: 8
        anchors.bottom: buttons.top
        anchors.bottomMargin: 14
        width: parent.width

        TextPane {
            focus: true
            width: root.sideBySide ? Math.round((panes.width - 12) / 2) : panes.width
            height: root.sideBySide ? panes.height : Math.round((panes.height - 12) / 2)
            text: root.item.cleanedText
            name: "Чистый текст"
            dark: root.dark
            onCopied: (selection) => root.copy(selection)
        }
        TextPane {
            x: root.sideBySide ? panes.width - width : 0
            y: root.sideBySide ? 0 : panes.height - height
            width: root.sideBySide ? panes.width - 12 - Math.round((panes.width - 12) / 2) : panes.width
            height: root.sideBySide ? panes.height : panes.height - 12 - Math.round((panes.height - 12) / 2)
            label: "WHISPER · RAW"
            text: root.item.rawText
            name: "Сырой текст"
            dark: root.dark
            onCopied: (selection) => root.copy(selection)
        }
    }
    ExpandedButtons {
        id: buttons

        anchors.bottom: parent.bottom
        width: parent.width
        dark: root.dark
        onCopyCleaned: root.copyCleaned()
        onCopyRaw: root.copyRaw()
        onRemoved: root.removed()
    }

    /// By key: without a selection the cleaned text, and its button shows that it is done.
    function copy(selection) {
        if (selection === "")
            buttons.pressCopyCleaned();
        else
            copySelection(selection);
    }
}
