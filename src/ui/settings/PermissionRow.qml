import QtQuick
import Velmora.Kit

/// A right, how it stands, and the way to it.
Column {
    id: root

    required property int index
    required property string title
    required property string hint
    required property string stateLabel
    required property string actionLabel
    required property bool granted
    property bool dark: VTheme.dark
    signal action()

    SettingsRule {
        visible: root.index > 0
        dark: root.dark
    }
    VRow {
        title: root.title
        hint: root.hint
        dark: root.dark

        VChip {
            anchors.verticalCenter: parent.verticalCenter
            label: root.stateLabel
            ok: root.granted
            dark: root.dark

            Accessible.name: root.title + ": " + root.stateLabel
        }
        VButton {
            width: 96
            title: root.actionLabel
            description: root.title
            size: VButtonSize.Sm
            dark: root.dark
            onAction: root.action()
        }
    }
}
