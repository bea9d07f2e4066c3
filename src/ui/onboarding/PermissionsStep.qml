import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// The rights that dictation needs.
Item {
    id: root

    required property OnboardingModel model
    property bool dark: VTheme.dark
    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property Item firstFocus: null

    StepText {
        id: words

        x: 40
        y: 12
        width: parent.width - 2 * x
        dark: root.dark
        caption: root.model.caption
        title: "Три разрешения.\nОдин раз."
    }
    VCard {
        id: card

        anchors.top: words.bottom
        anchors.topMargin: 20
        x: 40
        width: parent.width - 2 * x
        verticalPadding: 2
        dark: root.dark

        Repeater {
            id: rows

            model: root.model.permissions

            PermissionStepRow {
                icon: [VIcon.mic, VIcon.inputMon, VIcon.accessibility][index]
                last: index === rows.count - 1
                dark: root.dark
                onActed: root.model.permissions.act(index)
            }
        }
    }
    Row {
        anchors.top: card.bottom
        anchors.topMargin: 18
        x: 40
        spacing: 10

        VIconView {
            y: 2
            icon: VIcon.lock
            size: 14
            color: root.theme.textMuted
        }
        Text {
            width: card.width - 24
            text: root.model.privacy
            textFormat: Text.PlainText
            color: root.theme.textMuted
            font: VFont.display(12)
            lineHeight: 1.25
            wrapMode: Text.Wrap

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
