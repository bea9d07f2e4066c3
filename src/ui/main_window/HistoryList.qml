import QtQuick
import QtQuick.Templates as T
import Velmora.Kit
import Velmora.MainWindow

/// The rows of the history by day.
ListView {
    id: list

    objectName: "historyList"

    required property HistoryModel dataModel
    required property real margin
    property bool dark: VTheme.dark

    readonly property int rowHeight: 54
    /// Whether the last step was made by key, so that the row shows its ring when it gets the focus back.
    property bool byKeyboard: false

    model: dataModel
    spacing: 4
    bottomMargin: margin
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true
    clip: true
    reuseItems: true
    cacheBuffer: 2 * rowHeight
    keyNavigationEnabled: false
    activeFocusOnTab: true
    highlightFollowsCurrentItem: false

    Accessible.role: Accessible.List
    Accessible.name: "История диктовок"

    function takeFocus(byKey) {
        byKeyboard = byKey;
        forceActiveFocus();
        if (currentItem)
            (currentItem as HistoryListItem).showFocus(byKey);
    }
    function step(by) {
        currentIndex = Math.max(0, Math.min(count - 1, currentIndex + by));
        // The first row's day is to be seen with it.
        if (currentIndex === 0)
            positionViewAtBeginning();
        else
            positionViewAtIndex(currentIndex, ListView.Contain);
        takeFocus(true);
    }
    function open(index, byKey) {
        byKeyboard = byKey;
        currentIndex = index;
        dataModel.expand(index);
    }

    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)
    Keys.onPressed: (event) => {
        const page = Math.max(1, Math.floor(height / (rowHeight + spacing)) - 1);
        const steps = {
            [Qt.Key_Home]: -count,
            [Qt.Key_End]: count,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_PageDown]: page
        };
        if (event.matches(StandardKey.Copy)) {
            if (dataModel.copyRow(currentIndex))
                (currentItem as HistoryListItem).showCopied();
            event.accepted = true;
        } else if (event.key in steps) {
            step(steps[event.key]);
            event.accepted = true;
        }
    }

    delegate: HistoryListItem {
        width: ListView.view.width
        margin: list.margin
        dark: list.dark
        rowHeight: list.rowHeight
        onTap: (byKey) => list.open(index, byKey)
    }

    T.ScrollBar.vertical: VScrollBar {
        dark: list.dark
    }

    // Whoever looks at the top sees what comes in there; whoever narrows the list sees its top.
    Connections {
        property bool atTop: true

        target: list.dataModel

        function onRowsAboutToBeInserted() {
            atTop = list.atYBeginning;
        }
        function onRowsInserted() {
            if (atTop)
                list.positionViewAtBeginning();
        }
        function onFilterChanged() {
            list.toTop();
        }
        function onSearchChanged() {
            list.toTop();
        }
    }

    function toTop() {
        currentIndex = count > 0 ? 0 : -1;
        positionViewAtBeginning();
    }
}
