import QtQuick
import Velmora.Kit

/// Two rings around the key it holds, one after the other, like a double tap.
Item {
    id: root

    property bool running: false
    property bool dark: VTheme.dark
    property real pulse1: 0
    property real pulse2: 0
    default property alias content: key.data

    readonly property real reach: 22

    implicitWidth: key.width + 2 * reach + 4
    implicitHeight: key.height + 2 * reach + 4

    SequentialAnimation {
        id: animateForever

        objectName: "animateForever"
        running: root.running
        loops: Animation.Infinite
        onRunningChanged: {
            if (!running)
                root.pulse1 = root.pulse2 = 0;
        }

        ParallelAnimation {
            Pulse { property: "pulse1" }
            SequentialAnimation {
                PauseAnimation { duration: 260 }
                Pulse { property: "pulse2" }
            }
        }
        PauseAnimation { duration: 600 }
    }
    Ring { amount: root.pulse1 }
    Ring { amount: root.pulse2 }

    Item {
        id: key

        anchors.centerIn: parent
        width: childrenRect.width
        height: childrenRect.height
    }

    component Pulse: NumberAnimation {
        target: root
        from: 0
        to: 1
        duration: 800
        easing.type: Easing.OutCubic
    }
    component Ring: VRoundedRect {
        required property real amount

        anchors.centerIn: parent
        visible: amount > 0 && amount < 1
        width: key.width + 2 * root.reach * amount
        height: key.height + 2 * root.reach * amount
        radius: 6 + root.reach * amount
        borderColor: VTheme.scheme(root.dark).accent
        borderWidth: 2
        opacity: 1 - amount
    }
}
