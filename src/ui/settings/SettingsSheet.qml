import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The settings, over whatever the window shows.
FocusScope {
    id: root

    required property SettingsSheetModel model
    property bool dark: VTheme.dark
    signal closed()

    readonly property VTheme theme: VTheme.scheme(dark)

    Accessible.role: Accessible.Dialog
    Accessible.name: model.title

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, root.dark ? 0.45 : 0.22)

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onClicked: root.closed()
            onWheel: (wheel) => wheel.accepted = true
        }
    }
    VShadow {
        target: panel
        color: Qt.rgba(0, 0, 0, 0.3)
        radius: 40
        cornerRadius: panel.radius
        offsetY: 12
    }
    VRoundedRect {
        id: panel

        anchors.centerIn: parent
        width: Math.min(520, root.width - 48)
        height: body.y + body.implicitHeight + 24
        radius: 16
        color: Qt.alpha(root.theme.windowBg, 1)
        borderColor: root.theme.hairlineStrong
        borderWidth: 1

        MouseArea {
            anchors.fill: parent
        }
        VH1 {
            x: 24
            y: 20
            width: parent.width - 2 * x - close.width
            text: root.model.title
            dark: root.dark
        }
        VIconBtn {
            id: close

            anchors.right: parent.right
            anchors.rightMargin: 18
            y: 20
            focus: true
            icon: VIcon.xMark
            tooltip: "Закрыть"
            dark: root.dark
            onAction: root.closed()
        }
        Loader {
            id: body

            x: 24
            y: 64
            width: parent.width - 2 * x
            sourceComponent: root.model.page === SettingsSheetModel.Permissions
                ? permissions : root.model.page === SettingsSheetModel.About ? about : toCome
        }
    }
    Component {
        id: permissions

        PermissionsPage {
            permissions: root.model.permissions
            dark: root.dark
        }
    }
    Component {
        id: about

        AboutPage {
            model: root.model
            dark: root.dark
        }
    }
    Component {
        id: toCome

        SettingsToCome {
            signedIn: root.model.signedIn
            onSignIn: root.model.signIn()
            dark: root.dark
        }
    }

    Shortcut {
        sequence: "Escape"
        onActivated: root.closed()
    }
}
