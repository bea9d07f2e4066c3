import QtQuick
import Velmora.Kit

/// Lifts what it holds by `amount` while the pointer is over it, with the accent's light under it.
Item {
    id: root

    property real amount: 1
    property color glow: Qt.alpha(VTheme.scheme(dark).accent, 0.5)
    property bool dark: VTheme.dark
    readonly property bool hover: pointer.hovered && amount > 0
    default property alias content: slot.data

    implicitWidth: slot.childrenRect.width
    implicitHeight: slot.childrenRect.height

    HoverHandler {
        id: pointer
    }
    VShadow {
        target: slot
        color: root.glow
        radius: 18
        cornerRadius: 8
        offsetY: 3
        opacity: root.hover ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: 140 }
        }
    }
    Item {
        id: slot

        y: root.hover ? -root.amount : 0
        width: root.implicitWidth
        height: root.implicitHeight

        Behavior on y {
            NumberAnimation { duration: 140 }
        }
    }
}
