import QtQuick
import Velmora.Kit

/// The settings of a version that has no screens for them; who isn't signed in can do that here.
Column {
    id: root

    required property bool signedIn
    property bool dark: VTheme.dark
    signal signIn()

    spacing: 10

    Text {
        width: parent.width
        visible: !root.signedIn
        text: "Вы не вошли в аккаунт, а без него речь не распознать. Вход откроется в браузере."
        color: VTheme.scheme(root.dark).text
        font: VFont.display(13)
        wrapMode: Text.Wrap
    }
    VButton {
        visible: !root.signedIn
        title: "Войти"
        icon: VIcon.person
        primary: true
        dark: root.dark
        onAction: root.signIn()
    }
    Item {
        visible: !root.signedIn
        width: 1
        height: 6
    }
    Text {
        width: parent.width
        text: "Настройки появятся в следующей версии. "
        color: VTheme.scheme(root.dark).textMuted
        font: VFont.display(13)
        wrapMode: Text.Wrap

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
