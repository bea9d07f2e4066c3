import QtQuick
import Velmora.Kit

/// A button with a title: filled with the accent when `primary`, without a frame when `ghost`. With `showSuccessFeedback` a
/// press shows `successTitle` for a moment.
FocusScope {
    id: root

    required property string title
    property int icon: -1
    property bool primary: false
    property bool ghost: false
    property bool dark: VTheme.dark
    property int size: VButtonSize.Md
    property bool showSuccessFeedback: false
    property string successTitle
    property int successDuration: 1200
    property bool didSucceed: false
    property alias focusPolicy: button.focusPolicy
    /// Drawn before the title in place of an icon.
    property Component mark: null
    /// What the title leaves open, for those who listen.
    property string description
    signal action()

    /// Shows `successTitle` for a moment, as a press does.
    function succeed() {
        didSucceed = true;
        fade.restart();
    }

    readonly property bool small: size === VButtonSize.Sm
    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property color ink: primary ? theme.onAccent : ghost ? theme.textMuted : theme.text

    implicitWidth: button.implicitWidth
    implicitHeight: button.implicitHeight

    VPlainButton {
        id: button

        anchors.fill: parent
        focus: true
        dark: root.dark
        text: root.didSucceed && root.successTitle ? root.successTitle : root.title
        implicitHeight: root.small ? 28 : 34
        leftPadding: root.small ? 12 : 16
        rightPadding: leftPadding
        onClicked: {
            if (root.showSuccessFeedback)
                root.succeed();
            root.action();
        }

        Accessible.description: root.description

        // Both faces are laid out, so that the button keeps its width.
        contentItem: Item {
            implicitWidth: root.showSuccessFeedback ? Math.max(face.implicitWidth, success.implicitWidth)
                                                    : face.implicitWidth
            implicitHeight: face.implicitHeight

            VButtonFace {
                id: face

                anchors.centerIn: parent
                visible: !root.didSucceed
                title: root.title
                icon: root.icon
                mark: root.mark
                ink: root.ink
                small: root.small
            }
            VButtonFace {
                id: success

                anchors.centerIn: parent
                visible: root.didSucceed
                title: root.successTitle || root.title
                icon: VIcon.check
                ink: root.primary ? root.ink : root.theme.green
                small: root.small
            }
        }
        background: VButtonBack {
            dark: root.dark
            primary: root.primary
            ghost: root.ghost
            radius: button.radius
            hovered: button.hovered
            down: button.down
        }
    }
    Timer {
        id: fade

        objectName: "successTimer"
        interval: root.successDuration
        onTriggered: root.didSucceed = false
    }
}
