import QtQuick
import Velmora.Kit
import Velmora.MainWindow
import Velmora.Navigation

/// The way to the screens, and what is to be known at all times.
Item {
    id: root

    required property AppNavigator nav
    required property SidebarModel model
    property bool dark: VTheme.dark

    readonly property VTheme theme: VTheme.scheme(dark)

    Component.onCompleted: model.appeared()

    Rectangle {
        anchors.fill: parent
        color: root.theme.surface
    }

    Row {
        x: 20
        y: 22
        spacing: 10

        VLogo {
            size: 30
        }
        VBrandWordmark {
            anchors.verticalCenter: parent.verticalCenter
            dark: root.dark
            size: 17
        }
    }

    Column {
        x: 12
        y: 78
        width: parent.width - 24
        spacing: 4

        SidebarNavItem {
            width: parent.width
            icon: VIcon.history
            label: "История"
            dark: root.dark
            selected: root.nav.screen === AppNavigator.History
            onAction: root.nav.openHistory()
        }
        SidebarNavItem {
            width: parent.width
            icon: VIcon.micFill
            label: "Созвоны"
            dark: root.dark
            selected: root.nav.screen === AppNavigator.Meetings
            onAction: root.nav.openMeetings()
        }
    }

    Column {
        id: bottom

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 14
        x: 12
        width: parent.width - 24
        spacing: 2

        Text {
            width: parent.width
            height: visible ? 30 : 0
            visible: text !== ""
            leftPadding: 12
            rightPadding: 12
            text: root.model.account
            color: root.theme.textDim
            font: VFont.display(11.5)
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter

            Accessible.role: Accessible.StaticText
            Accessible.name: "Учётная запись: " + text
        }
        VHairline {
            width: parent.width
            dark: root.dark
        }
        Item {
            width: 1
            height: 6
        }
        SidebarBottomRow {
            width: parent.width
            icon: root.model.permissionIcon
            label: root.model.permissionLabel
            dark: root.dark
            tint: root.model.allGranted ? root.theme.green : root.theme.amber
            onAction: root.nav.openSettings("permissions")
        }
        SidebarBottomRow {
            width: parent.width
            icon: VIcon.gear
            label: "Настройки"
            dark: root.dark
            onAction: root.nav.openSettings()
        }
    }
}
