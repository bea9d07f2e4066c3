import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// What the main window holds: the sidebar and the chosen screen.
Item {
    id: view

    required property AppNavigator nav

    Rectangle {
        anchors.fill: parent
        color: VTheme.windowBg
    }
}
