import QtQuick
import Velmora.Kit

/// The application a dictation went into.
VRoundedRect {
    id: root

    required property string name
    property bool dark: VTheme.dark

    implicitWidth: label.implicitWidth + 16
    implicitHeight: 20
    radius: 10
    color: VTheme.scheme(dark).accent
    gradientEnd: VTheme.scheme(dark).brandGradientEnd

    Text {
        id: label

        anchors.centerIn: parent
        text: root.name
        color: VTheme.scheme(root.dark).onAccent
        font: VFont.display(10.5, VFont.Semibold)
    }
}
