import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// A try of dictation: what to do on the left, with the key under it, and the field for the text on the right.
Item {
    id: root

    required property OnboardingModel model
    required property string title
    required property string text
    required property string prompt
    property alias value: field.value
    property string footnote
    /// Where it says how things stand.
    property string hint
    property bool dark: VTheme.dark
    default property alias content: key.data

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property TutorialModel tutorial: model.tutorial
    readonly property Item firstFocus: field.input

    StepText {
        id: words

        x: 40
        y: 8
        width: 276
        dark: root.dark
        caption: root.model.caption
        title: root.title
        text: root.text
    }
    Text {
        id: note

        anchors.top: words.bottom
        anchors.topMargin: 8
        x: words.x
        width: words.width
        visible: text !== ""
        text: root.tutorial.keyNote
        textFormat: Text.PlainText
        color: root.theme.text
        font: VFont.display(12.5, VFont.Medium)
        elide: Text.ElideRight

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Item {
        id: key

        anchors.top: note.visible ? note.bottom : words.bottom
        anchors.bottom: parent.bottom
        x: words.x
        width: words.width
    }

    TutorialField {
        id: field

        anchors.right: parent.right
        anchors.rightMargin: 40
        y: 12
        width: 284
        height: 268
        prompt: root.prompt
        dark: root.dark
        onAccepted: root.model.proceed()
    }
    Text {
        id: problem

        anchors.top: field.bottom
        anchors.topMargin: 10
        x: field.x
        width: field.width
        visible: text !== ""
        text: root.tutorial.problem
        textFormat: Text.PlainText
        color: root.theme.red
        font: VFont.display(12.5)
        lineHeight: 1.2
        wrapMode: Text.Wrap
        maximumLineCount: 4
        elide: Text.ElideRight

        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Row {
        anchors.top: problem.visible ? problem.bottom : field.bottom
        anchors.topMargin: 12
        x: field.x
        spacing: 12

        VButton {
            objectName: "fallbackButton"
            title: "Записать"
            icon: VIcon.mic
            size: VButtonSize.Sm
            focusPolicy: Qt.TabFocus
            enabled: root.tutorial.canRecord
            dark: root.dark
            onAction: {
                field.input.forceActiveFocus(); // the text goes where the focus is
                root.tutorial.record();
            }
        }
        Text {
            height: 28
            width: field.width - x
            text: root.hint
            color: root.theme.textMuted
            font: VFont.display(12)
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Text {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        x: words.x
        width: parent.width - 2 * x
        visible: text !== ""
        text: root.footnote
        color: root.theme.textMuted
        font: VFont.display(12)
        wrapMode: Text.Wrap

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
