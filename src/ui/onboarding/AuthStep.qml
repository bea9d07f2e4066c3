import QtQuick
import Velmora.Hud
import Velmora.Kit
import Velmora.Onboarding

/// The sign-in, which goes on in the browser and comes back by itself.
Item {
    id: root

    required property OnboardingModel model
    property bool dark: VTheme.dark
    signal loginTap()

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property Item firstFocus: model.isLoggedIn ? null : login

    function titleFor(account: string): string {
        if (!model.isLoggedIn)
            return "Войди в Velmora."
        return account ? account + "\nподключён." : "Аккаунт подключён."
    }

    VShadow {
        target: disc
        color: Qt.alpha(root.theme.accent, 0.4)
        radius: 26
        cornerRadius: 36
        offsetY: 6
    }
    VRoundedRect {
        id: disc

        anchors.horizontalCenter: parent.horizontalCenter
        y: 50
        width: 72
        height: 72
        radius: 36
        color: root.theme.accent
        gradientEnd: root.theme.brandGradientStrongEnd

        VIconView {
            anchors.centerIn: parent
            icon: root.model.isLoggedIn ? VIcon.check : VIcon.person
            size: 30
            color: root.theme.onAccent
        }
    }
    TextMetrics {
        id: account

        font: words.titleFont
        text: root.model.account
        elide: Text.ElideMiddle // the domain tells accounts apart as well as the name does
        elideWidth: words.width
    }
    StepText {
        id: words

        anchors.horizontalCenter: parent.horizontalCenter
        y: 156
        width: 460
        centred: true
        dark: root.dark
        caption: root.model.caption
        title: root.titleFor(account.elidedText)
        spokenTitle: root.titleFor(root.model.account)
        text: root.model.isLoggedIn ? "Готово — можно пользоваться Velmora с этого Mac."
                                    : "Откроется браузер: можно войти через email/пароль или Google."
    }
    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: words.bottom
        anchors.topMargin: 26
        visible: !root.model.isLoggedIn
        spacing: 18

        HoverLift {
            anchors.horizontalCenter: parent.horizontalCenter
            dark: root.dark

            VButton {
                id: login

                title: root.model.awaitsBrowser ? "Открыть ещё раз" : "Войти через браузер"
                icon: VIcon.globe
                primary: !root.model.awaitsBrowser
                dark: root.dark
                onAction: root.loginTap()
            }
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 10
            visible: root.model.awaitsBrowser

            BloomSpinner {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.model.awaitsBrowser && root.model.onScreen
                size: 15
                accent: root.theme.accent
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "Ждём подтверждения в браузере…"
                color: root.theme.textMuted
                font: VFont.display(13)

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: text !== ""
            text: root.model.loginProblem
            color: root.theme.red
            font: VFont.display(13)

            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }
}
