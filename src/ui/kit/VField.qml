import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A line of text to fill in.
T.TextField {
    id: field

    property alias value: field.text
    property alias placeholder: field.placeholderText
    property bool mono: false
    property bool secure: false
    property int icon: -1
    property bool dark: VTheme.dark
    /// What is to be filled in, for those who listen; the placeholder unless it is set.
    property string label

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: 220
    implicitHeight: 32
    leftPadding: icon >= 0 ? 32 : 10
    rightPadding: 10
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    font: mono ? VFont.mono(12) : VFont.display(13)
    color: theme.text
    placeholderTextColor: theme.textDim
    selectionColor: theme.accentSoft
    selectedTextColor: theme.text
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    echoMode: secure ? TextInput.Password : TextInput.Normal
    passwordCharacter: "•"

    Accessible.name: label || placeholder

    cursorDelegate: VCaret {
        dark: field.dark
        blinking: field.cursorVisible
    }
    background: VRoundedRect {
        radius: 8
        color: field.theme.inputBg
        borderColor: field.activeFocus ? field.theme.accent
                                       : field.hovered ? field.theme.textDim : field.theme.hairlineStrong
        borderWidth: 1

        VRoundedRect {
            anchors.fill: parent
            anchors.margins: -3
            visible: field.activeFocus
            radius: 11
            borderColor: field.theme.accentSoft
            borderWidth: 3
        }
        VIconView {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            visible: field.icon >= 0
            icon: field.icon
            size: 14
            color: field.theme.textMuted
        }
    }

    Text {
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height
        visible: !field.length && !field.preeditText
        text: field.placeholder
        color: field.placeholderTextColor
        font: field.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
}
