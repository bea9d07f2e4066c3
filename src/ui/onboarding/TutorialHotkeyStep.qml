import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// The second dictation: a double tap, and the hands are free.
TutorialStep {
    id: root

    title: "Двойной тап."
    text: "Тапни Fn два раза быстро — запись пойдёт до повторного тапа. Можно говорить долго и не держать клавишу. Попробуй здесь:"
    prompt: "Текст появится здесь…"
    hint: tutorial.recording ? tutorial.hint : "3 секунды без клавиши"
    footnote: "Сменить клавишу можно в Настройки → Запись."
    value: model.tutorial2Text
    onValueChanged: model.tutorial2Text = value

    Column {
        anchors.centerIn: parent
        spacing: 4

        DoubleTapHintRings {
            objectName: "rings"
            anchors.horizontalCenter: parent.horizontalCenter
            running: root.model.onScreen && !root.tutorial.recording
            dark: root.dark

            FnKeycap {
                label: root.tutorial.keyLabel
                lit: root.tutorial.recording
                dark: root.dark
            }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Тапни 2 раза"
            color: root.theme.textMuted
            font: VFont.display(13, VFont.Medium)

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
