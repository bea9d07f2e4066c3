import QtQuick
import Velmora.Kit

/// A small label. `ok` says how things stand: green or red; `tint` is any other colour.
VRoundedRect {
    id: chip

    required property string label
    property bool dark: VTheme.dark
    property var ok: undefined
    property var tint: undefined

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property bool colored: ok !== undefined || tint !== undefined
    readonly property color hue: tint !== undefined ? tint
                                 : ok === undefined ? theme.textMuted : ok ? theme.green : theme.red
    // A hue alone is too pale for letters on a light ground.
    readonly property color ink: dark || !colored ? hue : Qt.tint(hue, Qt.alpha(theme.text, 0.35))

    implicitWidth: Math.ceil(row.implicitWidth + 16)
    implicitHeight: 22
    radius: 11
    color: colored ? Qt.alpha(hue, 0.14) : theme.hairline

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 5

        VIconView {
            anchors.verticalCenter: parent.verticalCenter
            visible: chip.ok !== undefined
            icon: chip.ok ? VIcon.check : VIcon.xMark
            size: 11
            color: chip.ink
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: chip.label
            color: chip.ink
            font: VFont.display(11, VFont.Medium)
        }
    }
}
