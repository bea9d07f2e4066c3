import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// The history's title, and what narrows it.
Item {
    id: root

    required property HistoryModel model
    property bool dark: VTheme.dark
    /// The user goes on from the search to what was found.
    signal goOn()

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: titles.height

    function focusSearch() {
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }

    Column {
        id: titles

        spacing: 3

        Text {
            text: "ИСТОРИЯ"
            color: root.theme.textMuted
            font: VFont.display(11, VFont.Semibold)
        }
        VH1 {
            text: "Транскрипции"
            dark: root.dark
        }
    }
    VField {
        id: field

        anchors.right: ages.left
        anchors.rightMargin: 10
        anchors.verticalCenter: ages.verticalCenter
        width: Math.min(220, root.width - titles.width - ages.width - 26)
        opacity: 1 // also under the settings
        icon: VIcon.search
        placeholder: "Поиск"
        label: "Поиск по истории"
        dark: root.dark
        text: root.model.search
        onTextEdited: root.model.search = text
        Keys.onDownPressed: root.goOn()
        Keys.onReturnPressed: root.goOn()
        Keys.onEnterPressed: root.goOn()

        Binding on text {
            value: root.model.search
        }
    }
    VSegmented {
        id: ages

        anchors.right: parent.right
        anchors.bottom: titles.bottom
        opacity: 1
        options: root.model.filterOptions
        selected: root.model.filter
        label: "За какое время"
        dark: root.dark
        onPicked: (option) => root.model.filter = option
    }
}
