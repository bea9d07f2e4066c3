import QtQuick
import Velmora.Kit
import Velmora.MainWindow
import Velmora.Navigation
import Velmora.Settings

/// What the main window holds: the sidebar and the chosen screen, and over them the settings.
Item {
    id: view

    required property MainWindowModel model
    readonly property AppNavigator nav: model.nav

    Rectangle {
        anchors.fill: parent
        color: Qt.alpha(VTheme.windowBg, 1)
    }

    FocusScope {
        id: content

        anchors.fill: parent
        focus: true
        enabled: !view.nav.showSettingsSheet

        Sidebar {
            id: sidebar

            width: 232
            height: parent.height
            nav: view.nav
            model: view.model.sidebar
        }
        VHairline {
            id: rule

            x: sidebar.width
            height: parent.height
            vertical: true
        }
        Loader {
            anchors.fill: parent
            anchors.leftMargin: sidebar.width + 1
            focus: true
            sourceComponent: view.nav.screen === AppNavigator.History ? history : meetings
        }
    }
    Component {
        id: history

        HistoryView {
            source: view.model.history
            hotkeyLabel: view.model.hotkeyLabel
            hotkeyNote: view.model.hotkeyNote
            reachable: !view.nav.showSettingsSheet
        }
    }
    Component {
        id: meetings

        MeetingsPlaceholder {}
    }

    // Made once, as soon as the window has nothing better to do, and kept: so it opens within a frame.
    Loader {
        id: settings

        readonly property bool wanted: view.nav.showSettingsSheet

        anchors.fill: parent
        active: wanted || leisure.came
        asynchronous: !wanted
        visible: wanted
        onLoaded: if (wanted) item.takeFocus()
        onWantedChanged: {
            if (!wanted)
                content.forceActiveFocus();
            else if (item)
                item.takeFocus();
        }
        sourceComponent: SettingsSheet {
            model: view.model.settingsSheet
            onClosed: view.nav.closeSettings()
        }
    }
    Timer {
        id: leisure

        property bool came: false

        interval: 600
        running: view.visible && !came
        onTriggered: came = true
    }

    Shortcut {
        sequence: "Ctrl+1"
        onActivated: view.nav.openHistory()
    }
    Shortcut {
        sequence: "Ctrl+2"
        onActivated: view.nav.openMeetings()
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: view.nav.openSettings()
    }
    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: view.Window.window.close()
    }
}
