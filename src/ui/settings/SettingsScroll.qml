import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// What may be higher than its place. Whatever gets the keyboard is brought into sight.
Flickable {
    id: scroll

    objectName: "settingsScroll"

    default property alias content: slot.data
    property bool dark: VTheme.dark

    readonly property real margin: 24
    readonly property real context: 48 // seen above and below what has the keyboard
    readonly property Item focused: Window.activeFocusItem

    function scrollTo(y) {
        contentY = Math.max(0, Math.min(y, contentHeight - height));
    }
    function showFocused() {
        let holder = focused;
        while (holder && holder !== slot)
            holder = holder.parent;
        if (!holder)
            return;
        const top = focused.mapToItem(contentItem, 0, 0).y - context;
        const bottom = top + focused.height + 2 * context;
        scrollTo(Math.max(bottom - height, Math.min(contentY, top)));
    }

    contentWidth: width
    contentHeight: slot.y + slot.height + margin
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true
    clip: true

    onFocusedChanged: showFocused()
    onHeightChanged: scrollTo(contentY)

    Keys.onPressed: (event) => {
        const ways = {
            [Qt.Key_Home]: -contentHeight,
            [Qt.Key_End]: contentHeight,
            [Qt.Key_PageUp]: margin - height,
            [Qt.Key_PageDown]: height - margin
        };
        if (event.modifiers === Qt.NoModifier && event.key in ways) {
            scrollTo(contentY + ways[event.key]);
            event.accepted = true;
        }
    }

    Item {
        id: slot

        x: scroll.margin - 1
        y: 8
        width: scroll.width - 2 * x
        height: childrenRect.height
    }

    T.ScrollBar.vertical: VScrollBar {
        dark: scroll.dark
    }
}
