import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A text to read, to select from and to copy whole.
FocusScope {
    id: root

    required property string text
    required property string name
    property string label
    property bool dark: VTheme.dark
    /// The copy key, with nothing selected.
    signal copyAll()

    readonly property VTheme theme: VTheme.scheme(dark)

    VRoundedRect {
        anchors.fill: parent
        radius: 12
        color: root.theme.cardBg
        borderColor: root.activeFocus ? root.theme.hairlineStrong : root.theme.hairline
        borderWidth: 1
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
            focus: true
            activeFocusOnTab: true
            text: root.text
            color: root.theme.text
            selectionColor: root.theme.accentSoft
            selectedTextColor: root.theme.text
            font: VFont.display(14)
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            readOnly: true
            selectByMouse: true
            cursorVisible: false

            Accessible.role: Accessible.EditableText
            Accessible.readOnly: true
            Accessible.name: root.name

            Keys.onPressed: (event) => {
                if (event.matches(StandardKey.Copy) && selectedText === "") {
                    root.copyAll();
                    event.accepted = true;
                } else if (!(event.modifiers & Qt.ShiftModifier)) {
                    event.accepted = root.scrollBy(event.key);
                }
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
