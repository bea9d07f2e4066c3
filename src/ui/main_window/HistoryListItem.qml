import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// A row of the list, and over the first of a day the day.
FocusScope {
    id: root

    required property int index
    required property string sectionTitle
    required property string sectionCount
    required property string time
    required property string tag
    required property string preview
    required property string duration
    required property string rowName
    required property real margin
    required property int rowHeight
    property bool dark: VTheme.dark
    signal tap(bool byKey)

    readonly property bool first: sectionTitle !== ""

    height: row.y + rowHeight

    Accessible.role: Accessible.ListItem
    Accessible.name: rowName

    // A row that waits for its next use is none, for those who listen as well.
    ListView.onPooled: {
        row.copied = false;
        visible = false;
    }
    ListView.onReused: visible = true

    /// The row has the focus already, whatever for: a ring is for those who go by key.
    function showFocus(byKey) {
        row.focusReason = byKey ? Qt.TabFocusReason : Qt.OtherFocusReason;
    }
    function showCopied() {
        row.copied = true;
        copiedTimer.restart();
    }

    Loader {
        active: root.first
        x: root.margin
        width: root.width - 2 * root.margin
        height: 40
        sourceComponent: DaySectionHeader {
            title: root.sectionTitle
            count: root.sectionCount
            dark: root.dark
        }
    }
    HistoryRow {
        id: row

        focus: true
        x: root.margin
        y: root.first ? (root.index > 0 ? 40 : 36) : 0
        width: root.width - 2 * root.margin
        height: root.rowHeight
        time: root.time
        tag: root.tag
        preview: root.preview
        duration: root.duration
        text: root.rowName
        dark: root.dark
        onClicked: root.tap(visualFocus)
    }
    Timer {
        id: copiedTimer

        interval: 1200
        onTriggered: row.copied = false
    }
}
