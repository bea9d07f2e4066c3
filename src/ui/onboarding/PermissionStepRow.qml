import QtQuick
import Velmora.Kit

/// A right: what it is for, whether it is there, and the way to it.
Item {
    id: row

    required property int index
    required property string title
    required property string hint
    required property string stateLabel
    required property string actionLabel
    required property bool granted
    property int icon: -1
    property bool last: false
    property bool dark: VTheme.dark
    signal acted()

    readonly property VTheme theme: VTheme.scheme(dark)

    width: parent ? parent.width : 0
    height: 62

    VRoundedRect {
        anchors.verticalCenter: parent.verticalCenter
        width: 34
        height: 34
        radius: 10
        color: Qt.alpha(row.granted ? row.theme.green : row.theme.amber, 0.14)

        VIconView {
            anchors.centerIn: parent
            icon: row.icon
            size: 17
            color: row.granted ? row.theme.green : row.theme.amber
        }
    }
    Column {
        x: 48
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - x - 230
        spacing: 3

        Text {
            width: parent.width
            text: row.title
            color: row.theme.text
            font: VFont.display(13.5, VFont.Medium)
            elide: Text.ElideRight

            Accessible.role: Accessible.StaticText
            Accessible.name: row.title + ": " + row.stateLabel
        }
        Text {
            width: parent.width
            text: row.hint
            color: row.theme.textMuted
            font: VFont.display(11.5)
            elide: Text.ElideRight
        }
    }
    Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12

        VChip {
            anchors.verticalCenter: parent.verticalCenter
            label: row.stateLabel
            ok: row.granted ? true : undefined
            tint: row.granted ? undefined : row.theme.amber
            dark: row.dark

            Accessible.ignored: true // the title says it
        }
        VButton {
            title: row.actionLabel
            description: row.title
            size: VButtonSize.Sm
            dark: row.dark
            onAction: row.acted()
        }
    }
    VHairline {
        anchors.bottom: parent.bottom
        width: parent.width
        visible: !row.last
        dark: row.dark
    }
}
