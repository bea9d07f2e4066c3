import QtQuick
import Velmora.Kit

/// A mark for the task tracker: three tasks, the first of them done.
Item {
    id: mark

    property real size: 16
    property color tint: VTheme.red

    implicitWidth: size
    implicitHeight: size

    Repeater {
        model: [1, 0.62, 0.8]

        Item {
            required property real modelData
            required property int index

            y: mark.size * (0.08 + 0.34 * index)
            width: mark.size
            height: mark.size * 0.18

            VRoundedRect {
                width: parent.height
                height: parent.height
                radius: height / 2
                color: mark.tint
            }
            VRoundedRect {
                x: parent.height * 1.6
                width: (parent.width - x) * parent.modelData
                height: parent.height
                radius: height / 2
                color: Qt.alpha(mark.tint, 0.7)
            }
        }
    }
}
