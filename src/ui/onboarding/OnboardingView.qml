import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// The first-run window: one step at a time, between the logo and the buttons that go back and forth.
FocusScope {
    id: view

    required property OnboardingModel model
    property bool dark: VTheme.dark
    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property int margin: 40

    focus: true

    Keys.onReturnPressed: (event) => proceed(event)
    Keys.onEnterPressed: (event) => proceed(event)

    // A step each time the key goes down, not while it is held.
    function proceed(event) {
        if (!event.isAutoRepeat)
            model.proceed();
    }

    Rectangle {
        anchors.fill: parent
        color: Qt.alpha(view.theme.windowBg, 1)

        AccentGlow {
            width: parent.width
            height: 400
            color: Qt.alpha(view.theme.accent, view.dark ? 0.17 : 0.26)
        }
    }

    Row {
        x: view.margin
        y: 26
        spacing: 10

        VLogo {
            size: 24
        }
        VBrandWordmark {
            anchors.verticalCenter: parent.verticalCenter
            dark: view.dark
            size: 15
        }
    }
    Row {
        id: progress

        anchors.right: parent.right
        anchors.rightMargin: view.margin
        y: 35
        spacing: 6

        Repeater {
            model: view.model.totalSteps

            VRoundedRect {
                required property int index
                readonly property bool current: index + 1 === view.model.step

                width: current ? 18 : 6
                height: 6
                radius: 3
                color: current ? view.theme.accent : index + 1 < view.model.step ? view.theme.textDim : view.theme.hairlineStrong

                Behavior on width {
                    NumberAnimation {
                        duration: 220
                        easing.type: Easing.OutCubic
                    }
                }
            }
        }
    }

    Loader {
        id: stage

        readonly property Component stepView: [welcome, auth, permissions, dictation, hotkey][view.model.step - 1]
        property int shownStep: view.model.step

        anchors.fill: parent
        anchors.topMargin: 76
        anchors.bottomMargin: bottom.height
        sourceComponent: stepView
        onLoaded: view.giveFocus()

        transform: Translate {
            id: slide
        }
    }
    ParallelAnimation {
        id: entrance

        objectName: "entrance"

        NumberAnimation {
            target: stage
            property: "opacity"
            from: 0
            to: 1
            duration: 240
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            id: slideIn

            target: slide
            property: "x"
            to: 0
            duration: 240
            easing.type: Easing.OutCubic
        }
    }
    Connections {
        target: view.model
        function onStepChanged() {
            slideIn.from = view.model.step > stage.shownStep ? 28 : -28;
            stage.shownStep = view.model.step;
            entrance.restart();
        }
    }

    Item {
        id: bottom

        anchors.bottom: parent.bottom
        width: parent.width
        height: 76

        VHairline {
            width: parent.width
            dark: view.dark
        }
        VButton {
            id: backButton

            anchors.verticalCenter: parent.verticalCenter
            x: view.margin - 16 // its title begins at the margin
            visible: view.model.canGoBack
            title: "Назад"
            ghost: true
            dark: view.dark
            onAction: view.model.back()
        }
        HoverLift {
            anchors.right: parent.right
            anchors.rightMargin: view.margin
            anchors.verticalCenter: parent.verticalCenter
            dark: view.dark
            amount: view.model.canContinue ? 1 : 0
            opacity: view.model.canContinue ? 1 : 0.45

            VButton {
                id: continueButton

                objectName: "continueButton"
                title: "Продолжить"
                description: view.model.obstacle
                primary: true
                dark: view.dark
                onAction: view.model.proceed()
            }
        }
    }

    Component {
        id: welcome

        WelcomeStep {
            model: view.model
            dark: view.dark
        }
    }
    Component {
        id: auth

        AuthStep {
            model: view.model
            dark: view.dark
            onLoginTap: view.model.openLoginURL()
        }
    }
    Component {
        id: permissions

        PermissionsStep {
            model: view.model
            dark: view.dark
        }
    }
    Component {
        id: dictation

        TutorialDictationStep {
            model: view.model
            dark: view.dark
        }
    }
    Component {
        id: hotkey

        TutorialHotkeyStep {
            model: view.model
            dark: view.dark
        }
    }

    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: view.Window.window.close()
    }

    /// To what the step is about, else to the button that goes on.
    function giveFocus() {
        const first = stage.item ? stage.item.firstFocus : null;
        (first ?? continueButton).forceActiveFocus();
    }
}
