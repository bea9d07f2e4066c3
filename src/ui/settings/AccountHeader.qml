import QtQuick
import Velmora.Kit
import Velmora.Settings

/// Whose settings they are, and the way to sign in or to the account.
Item {
    id: root

    required property AccountHeaderModel model
    property bool dark: VTheme.dark

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitHeight: 68

    Component.onCompleted: if (visible) model.appeared()
    onVisibleChanged: if (visible) model.appeared()

    VRoundedRect {
        id: portrait

        anchors.verticalCenter: parent.verticalCenter
        width: 36
        height: 36
        radius: 18
        color: root.model.signedIn ? root.theme.accentSoft : root.theme.hairline

        VIconView {
            anchors.centerIn: parent
            icon: VIcon.person
            size: 17
            color: root.model.signedIn ? root.theme.accent : root.theme.textMuted
        }
    }
    Text {
        anchors.left: portrait.right
        anchors.leftMargin: 12
        anchors.right: ways.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: root.model.name
        color: root.model.signedIn ? root.theme.text : root.theme.textMuted
        font: VFont.display(14, VFont.Semibold)
        elide: Text.ElideMiddle
        textFormat: Text.PlainText

        Accessible.role: Accessible.StaticText
        Accessible.name: "Учётная запись: " + text
    }
    Row {
        id: ways

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter

        VButton {
            visible: !root.model.signedIn
            title: "Войти"
            icon: VIcon.person
            primary: true
            size: VButtonSize.Sm
            dark: root.dark
            onAction: root.model.signIn()
        }
        VButton {
            visible: root.model.hasPage
            title: "Аккаунт"
            icon: VIcon.globe
            description: "Откроется в браузере"
            size: VButtonSize.Sm
            dark: root.dark
            onAction: root.model.openPage()
        }
    }
}
