import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// The first dictation: hold the key and speak.
TutorialStep {
    id: root

    title: "Первая\nдиктовка."
    text: "Зажми Fn и говори. Отпусти — Velmora распознает речь и вставит готовый текст в поле справа."
    prompt: "Текст появится здесь после диктовки…"
    hint: "3 секунды без клавиши"
    value: model.tutorial1Text
    onValueChanged: model.tutorial1Text = value

    Column {
        anchors.centerIn: parent
        spacing: 14

        PulsingKeyCap {
            anchors.horizontalCenter: parent.horizontalCenter
            label: root.tutorial.keyLabel
            lit: root.tutorial.recording
            running: root.model.onScreen
            dark: root.dark
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.tutorial.hint
            color: root.tutorial.recording ? root.theme.text : root.theme.textMuted
            font: VFont.display(13, VFont.Medium)

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
