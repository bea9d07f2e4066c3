import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// What the program does.
Item {
    id: root

    required property OnboardingModel model
    property bool dark: VTheme.dark
    /// How bright the light behind the bars is.
    property real glow: 0.2
    readonly property Item firstFocus: null

    SequentialAnimation {
        objectName: "glow"
        running: root.model.onScreen
        loops: Animation.Infinite

        NumberAnimation {
            target: root
            property: "glow"
            to: 0.42
            duration: 1600
            easing.type: Easing.InOutSine
        }
        NumberAnimation {
            target: root
            property: "glow"
            to: 0.2
            duration: 1600
            easing.type: Easing.InOutSine
        }
    }

    VShadow {
        target: lamp
        color: VTheme.scheme(root.dark).accent
        radius: 70
        cornerRadius: 40
        hollow: false
        opacity: root.glow
    }
    Item {
        id: lamp

        anchors.centerIn: wave
        width: 110
        height: 70
    }
    BrandWaveAnimation {
        id: wave

        anchors.horizontalCenter: parent.horizontalCenter
        y: 36
        width: 170
        height: 130
        dark: root.dark
        running: root.model.onScreen
    }
    StepText {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 208
        width: 440
        centred: true
        dark: root.dark
        caption: root.model.caption
        title: "Добро пожаловать."
        text: "Velmora распознаёт твою речь, чистит её от слов-паразитов и вставляет готовый текст прямо в курсор. Работает в любом приложении на Mac."
    }
}
