import QtQuick
import Velmora.Kit
import Velmora.Settings

/// What the program is.
VCard {
    id: root

    required property AboutModel model

    readonly property VTheme theme: VTheme.scheme(dark)

    padding: 24
    verticalPadding: 40

    VLogo {
        anchors.horizontalCenter: parent.horizontalCenter
        size: 72
    }
    Item {
        width: 1
        height: 18
    }
    VBrandWordmark {
        anchors.horizontalCenter: parent.horizontalCenter
        size: 22
        dark: root.dark
    }
    Text {
        width: parent.width
        topPadding: 8
        text: "Голос → чистый текст для нейросетей"
        color: root.theme.text
        font: VFont.display(14)
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Text {
        width: parent.width
        topPadding: 6
        visible: text !== ""
        text: root.model.version
        color: root.theme.textMuted
        font: VFont.display(12.5)
        horizontalAlignment: Text.AlignHCenter

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        topPadding: 24
        spacing: 8
        visible: root.model.hasLinks

        VButton {
            title: "Что нового"
            icon: VIcon.globe
            description: "Откроется в браузере"
            size: VButtonSize.Sm
            dark: root.dark
            onAction: root.model.openNews()
        }
        VButton {
            title: "Лицензия"
            icon: VIcon.globe
            description: "Откроется в браузере"
            size: VButtonSize.Sm
            dark: root.dark
            onAction: root.model.openLicense()
        }
    }
}
