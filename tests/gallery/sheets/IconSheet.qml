import QtQuick
import Velmora.Kit

Grid {
    id: grid

    readonly property var names: VIcon.keys().sort((a, b) => VIcon[a] - VIcon[b])

    columns: 4
    columnSpacing: 24
    rowSpacing: 14

    Repeater {
        model: grid.names

        Row {
            id: row

            required property string modelData

            spacing: 10
            width: 210

            Repeater {
                model: [11, 14, 16, 20]

                VIconView {
                    required property int modelData

                    anchors.verticalCenter: parent.verticalCenter
                    icon: VIcon[row.modelData]
                    size: modelData
                    color: VTheme.text
                }
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: row.modelData
                color: VTheme.textMuted
                font: VFont.mono(10.5)
            }
        }
    }
}
