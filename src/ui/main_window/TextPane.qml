import QtQuick
import QtQuick.Templates as T
import Velmora.Kit
import Velmora.MainWindow

/// A text to read, to select from and to copy. The keys go to the pane: a text that has them itself keeps those of the window
/// from working.
T.Control {
    id: root

    required property string text
    required property string name
    property string label
    property bool dark: VTheme.dark
    /// The copy key: what is selected, or the empty text for the whole.
    signal copied(string selection)

    readonly property VTheme theme: VTheme.scheme(dark)

    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.StaticText
    Accessible.name: name
    Accessible.description: text
    Accessible.focusable: true

    Keys.onPressed: (event) => {
        if (event.matches(StandardKey.Copy)) {
            copied(edit.selectedText);
            event.accepted = true;
        } else if (event.matches(StandardKey.SelectAll)) {
            edit.selectAll();
            event.accepted = true;
        } else {
            event.accepted = scrollBy(event.key);
        }
    }

    background: VRoundedRect {
        radius: 12
        color: root.theme.cardBg
        borderColor: root.theme.hairline
        borderWidth: 1

        VFocusRing {
            dark: root.dark
            corner: 12
            shown: root.visualFocus
        }
    }
    Text {
        id: caption

        x: 16
        y: 14
        height: visible ? implicitHeight + 8 : 0
        visible: root.label !== ""
        text: root.label
        color: root.theme.text
        opacity: 0.4
        font: VFont.display(11, VFont.Semibold)
    }
    Flickable {
        id: flick

        anchors.fill: parent
        anchors.margins: 1
        anchors.topMargin: caption.y + caption.height
        anchors.bottomMargin: 10
        contentHeight: edit.height
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true
        clip: true
        interactive: contentHeight > height

        T.ScrollBar.vertical: VScrollBar {
            dark: root.dark
        }

        TextEdit {
            id: edit

            x: 15
            width: flick.width - 30
            bottomPadding: 4
            text: root.text
            color: root.theme.text
            selectionColor: root.theme.accentSoft
            selectedTextColor: root.theme.text
            font: VFont.display(14)
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            readOnly: true
            selectByMouse: true
            persistentSelection: true
            activeFocusOnPress: false
            Component.onCompleted: LineSpacing.apply(textDocument, 1.3)

            Accessible.ignored: true

            PointHandler {
                onActiveChanged: {
                    if (active)
                        root.forceActiveFocus(Qt.MouseFocusReason);
                }
            }
            HoverHandler {
                cursorShape: Qt.IBeamCursor
            }
        }
    }

    /// Whether it was a key that scrolls.
    function scrollBy(key) {
        const line = 24;
        const page = flick.height - line;
        const steps = {
            [Qt.Key_Up]: -line,
            [Qt.Key_Down]: line,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_PageDown]: page,
            [Qt.Key_Home]: -flick.contentHeight,
            [Qt.Key_End]: flick.contentHeight
        };
        if (!(key in steps))
            return false;
        flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height, flick.contentY + steps[key]));
        return true;
    }
}
