import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// The dictations: a list by day, narrowed by age and by a search, and in its place the one that is open.
FocusScope {
    id: root

    required property HistorySource source
    required property string hotkeyLabel
    property string hotkeyNote
    property bool dark: VTheme.dark
    /// Without the header, for use inside another screen.
    property bool embedded: false
    /// Whether nothing lies over it, so that its keys are its own.
    property bool reachable: true

    readonly property real margin: width < 640 ? 20 : 28

    HistoryModel {
        id: history

        source: root.source
    }

    HistoryHeader {
        id: header

        x: root.margin
        y: root.embedded ? 0 : 22
        width: root.width - 2 * root.margin
        height: root.embedded ? 0 : implicitHeight
        visible: !root.embedded
        model: history
        dark: root.dark
        onGoOn: root.showList(true)
    }

    Item {
        anchors.fill: parent
        anchors.topMargin: root.embedded ? 0 : header.y + header.height + 14

        HistoryList {
            id: list

            anchors.fill: parent
            visible: !history.empty && !history.hasExpanded
            focus: !history.hasExpanded
            dataModel: history
            margin: root.margin
            dark: root.dark
        }
        Loader {
            anchors.fill: parent
            active: history.empty && !history.hasExpanded
            sourceComponent: EmptyHistoryState {
                hotkeyLabel: root.hotkeyLabel
                hotkeyNote: root.hotkeyNote
                hiddenLabel: history.hiddenLabel
                dark: root.dark
                onShowAll: history.showAll()
            }
        }
        Loader {
            anchors.fill: parent
            anchors.leftMargin: root.margin
            anchors.rightMargin: root.margin
            anchors.bottomMargin: root.margin
            active: history.hasExpanded
            focus: active
            onLoaded: item.forceActiveFocus(list.byKeyboard ? Qt.TabFocusReason : Qt.OtherFocusReason)
            onActiveChanged: {
                if (!active)
                    Qt.callLater(root.showList, list.byKeyboard); // when the list is there again
            }
            sourceComponent: ExpandedHistoryItem {
                item: history.expanded
                dark: root.dark
                onCopyCleaned: history.copyCleaned()
                onCopyRaw: history.copyRaw()
                onCopySelection: (selection) => root.source.copy(selection)
                onRemoved: history.removeExpanded()
                onClosed: history.collapse()
            }
        }
    }

    /// The keyboard goes to the list, at the row where it was.
    function showList(byKey) {
        if (list.visible)
            list.takeFocus(byKey);
    }

    Shortcut {
        sequences: [StandardKey.Find]
        enabled: root.reachable && !root.embedded
        onActivated: header.focusSearch()
    }
    Shortcut {
        sequence: "Escape"
        enabled: root.reachable && (history.hasExpanded || history.search !== "")
        onActivated: history.hasExpanded ? history.collapse() : history.search = ""
    }
}
