import QtQuick
import Velmora.Kit

/// A key of the keyboard with its `text`, or whatever else it holds. With `gradient` it is lit in the accent.
Item {
    id: cap

    default property alias content: face.data
    property alias text: letters.text
    property bool dark: VTheme.dark
    property bool gradient: false
    property real fontSize: 11

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property color ink: gradient ? theme.onAccent : theme.text

    implicitWidth: Math.max(implicitHeight, face.childrenRect.width + 2 * Math.round(fontSize * 0.65))
    implicitHeight: Math.round(fontSize * 2)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    // The key's side, seen under its top.
    VRoundedRect {
        anchors.fill: parent
        radius: 6
        color: cap.gradient ? cap.theme.brandGradientEnd : cap.theme.hairlineStrong
    }
    VRoundedRect {
        anchors.fill: parent
        anchors.bottomMargin: 2
        radius: 5
        color: cap.gradient ? cap.theme.accent : cap.theme.inputBg
        gradientEnd: cap.gradient ? cap.theme.brandGradientStrongEnd : undefined
        borderColor: cap.theme.hairlineStrong
        borderWidth: 1
    }
    Item {
        id: face

        anchors.centerIn: parent
        anchors.verticalCenterOffset: -1
        width: childrenRect.width
        height: childrenRect.height

        Text {
            id: letters

            visible: text !== ""
            width: text !== "" ? implicitWidth : 0
            color: cap.ink
            font: VFont.mono(cap.fontSize, VFont.Medium)
        }
    }
}
