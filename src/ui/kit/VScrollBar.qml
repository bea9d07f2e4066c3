import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// Shows where in a list one is, while it moves or is under the pointer.
T.ScrollBar {
    id: bar

    property bool dark: VTheme.dark
    readonly property bool shown: size < 1 && (active || hovered || pressed || policy === T.ScrollBar.AlwaysOn)

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: 0.08
    hoverEnabled: true
    Accessible.name: "Прокрутка"
    visible: policy !== T.ScrollBar.AlwaysOff

    contentItem: VRoundedRect {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? VTheme.scheme(bar.dark).textMuted : VTheme.scheme(bar.dark).textDim
        opacity: bar.shown ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: 180 }
        }
    }
}
