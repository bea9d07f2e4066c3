import QtQuick
import Velmora.Kit
import Velmora.Settings

/// What the program is.
Column {
    id: root

    required property SettingsSheetModel model
    property bool dark: VTheme.dark

    readonly property VTheme theme: VTheme.scheme(dark)

    spacing: 16

    Row {
        topPadding: 6
        spacing: 14

        VLogo {
            size: 52
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            VBrandWordmark {
                dark: root.dark
            }
            Text {
                visible: text !== ""
                text: root.model.version
                color: root.theme.textMuted
                font: VFont.display(12.5)

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    VButton {
        visible: root.model.site !== ""
        title: root.model.site
        icon: VIcon.globe
        size: VButtonSize.Sm
        dark: root.dark
        onAction: root.model.openSite()
    }
}
