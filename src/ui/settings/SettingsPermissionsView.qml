import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The rights that dictation needs, the way to those that are missing, and the relaunch after a grant.
Column {
    id: root

    required property PermissionsModel permissions
    required property RelaunchModel relaunch
    property bool dark: VTheme.dark

    spacing: 16

    Column {
        width: parent.width
        spacing: 6

        VH1 {
            text: "Разрешения"
            dark: root.dark
        }
        Text {
            width: parent.width
            text: root.permissions.summary
            color: VTheme.scheme(root.dark).textMuted
            font: VFont.display(13)
            lineHeight: 1.2
            wrapMode: Text.Wrap

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    VCard {
        width: parent.width
        verticalPadding: 6
        dark: root.dark

        Repeater {
            model: root.permissions

            PermissionRow {
                width: parent.width
                dark: root.dark
                onAction: root.permissions.act(index)
            }
        }
    }
    VCard {
        width: parent.width
        verticalPadding: 6
        dark: root.dark

        VRow {
            title: "Только что выдал разрешение?"
            hint: "macOS иногда применяет новые разрешения только после перезапуска приложения."
            dark: root.dark

            VButton {
                title: root.relaunch.label
                enabled: !root.relaunch.relaunching
                size: VButtonSize.Sm
                dark: root.dark
                onAction: root.relaunch.relaunch()
            }
        }
    }
}
