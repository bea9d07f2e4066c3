import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// The dictation key, which asks to be held.
Item {
    id: root

    required property string label
    property bool lit: false
    property bool running: false
    property bool dark: VTheme.dark
    /// How far the light around the key is out, 0 to 1.
    property real pulse: 0

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: key.implicitWidth + 28
    implicitHeight: key.implicitHeight + 28

    SequentialAnimation {
        objectName: "pulse"
        running: root.running && !root.lit
        loops: Animation.Infinite
        onRunningChanged: {
            if (!running)
                root.pulse = 0;
        }

        NumberAnimation {
            target: root
            property: "pulse"
            to: 1
            duration: 900
            easing.type: Easing.InOutSine
        }
        NumberAnimation {
            target: root
            property: "pulse"
            to: 0
            duration: 900
            easing.type: Easing.InOutSine
        }
    }
    VRoundedRect {
        readonly property real reach: root.lit ? 10 : 4 + 7 * root.pulse

        anchors.centerIn: parent
        width: key.width + 2 * reach
        height: key.height + 2 * reach
        radius: 8 + reach
        color: Qt.alpha(root.theme.accent, root.lit ? 0.3 : 0.1 + 0.12 * root.pulse)
    }
    FnKeycap {
        id: key

        anchors.centerIn: parent
        label: root.label
        lit: root.lit
        dark: root.dark
    }
}
