import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A field of several lines, as any editor has one: what is dictated is pasted into it. Enter goes on, with Shift it is a new line.
FocusScope {
    id: root

    required property string prompt
    property alias value: area.text
    property bool dark: VTheme.dark
    readonly property Item input: area
    signal accepted()

    readonly property VTheme theme: VTheme.scheme(dark)

    VRoundedRect {
        anchors.fill: parent
        anchors.margins: -3
        visible: area.activeFocus
        radius: 15
        borderColor: root.theme.accentSoft
        borderWidth: 3
    }
    VRoundedRect {
        anchors.fill: parent
        radius: 12
        color: root.theme.inputBg
        borderColor: area.activeFocus ? root.theme.accent : root.theme.hairlineStrong
        borderWidth: 1
    }
    Text {
        x: 14
        y: 12
        width: parent.width - 28
        visible: !area.length && !area.preeditText
        text: root.prompt
        color: root.theme.textDim
        font: area.font
        wrapMode: Text.Wrap

        Accessible.ignored: true // the field says it
    }
    Flickable {
        id: flick

        anchors.fill: parent
        anchors.margins: 1
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        pixelAligned: true

        T.ScrollBar.vertical: VScrollBar {
            dark: root.dark
        }
        T.TextArea.flickable: T.TextArea {
            id: area

            focus: true
            leftPadding: 13
            rightPadding: 13
            topPadding: 11
            bottomPadding: 11
            color: root.theme.text
            selectionColor: root.theme.accentSoft
            selectedTextColor: root.theme.text
            font: VFont.display(14)
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            selectByMouse: true
            Component.onCompleted: cursorPosition = length

            Accessible.name: root.prompt

            Keys.onPressed: (event) => {
                const enter = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
                if (enter && !(event.modifiers & Qt.ShiftModifier)) {
                    if (!event.isAutoRepeat)
                        root.accepted();
                    event.accepted = true;
                } else if (event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) {
                    const reason = event.key === Qt.Key_Tab ? Qt.TabFocusReason : Qt.BacktabFocusReason;
                    area.nextItemInFocusChain(event.key === Qt.Key_Tab).forceActiveFocus(reason);
                    event.accepted = true;
                }
            }
            cursorDelegate: VCaret {
                dark: root.dark
                blinking: area.cursorVisible
            }
        }
    }
}
