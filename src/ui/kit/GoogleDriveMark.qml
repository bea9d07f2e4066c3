import QtQuick
import Velmora.Kit

/// A mark for the online storage: a stack of shelves.
Item {
    id: mark

    property real size: 16

    implicitWidth: size
    implicitHeight: size

    Repeater {
        model: [VTheme.green, VTheme.amber, VTheme.accent]

        VRoundedRect {
            required property color modelData
            required property int index

            y: mark.size * (0.06 + 0.32 * index)
            width: mark.size
            height: mark.size * 0.24
            radius: height * 0.35
            color: modelData
        }
    }
}
