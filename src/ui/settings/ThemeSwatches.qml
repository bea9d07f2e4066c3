import QtQuick
import Velmora.Kit

/// One of a few colours. An accent has a `label` and a `hue`; `selected` is a label.
Row {
    id: root

    property var accents: []
    property alias selected: choices.selected
    property bool dark: VTheme.dark
    property string label
    signal picked(string label)

    spacing: 4

    Accessible.role: Accessible.Grouping
    Accessible.name: label

    VChoice {
        id: choices

        options: root.accents.map((accent) => accent.label)
        onPicked: (label) => root.picked(label)
    }
    Repeater {
        model: root.accents

        ThemeSwatch {
            required property var modelData

            choice: choices
            hue: modelData.hue
            dark: root.dark
        }
    }
}
