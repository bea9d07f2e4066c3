import QtQuick
import Velmora.Kit

/// The place where letters appear.
Rectangle {
    id: caret

    property bool dark: VTheme.dark
    property bool blinking: false

    width: 1
    color: VTheme.scheme(dark).accent
    visible: blinking && blink.lit

    Timer {
        id: blink

        property bool lit: true

        interval: Qt.styleHints.cursorFlashTime / 2
        repeat: true
        running: caret.blinking && interval > 0
        onRunningChanged: lit = true
        onTriggered: lit = !lit
    }
}
