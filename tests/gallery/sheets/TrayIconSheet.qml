import QtQuick
import Velmora.Kit

/// The tray icon in each mode: as trays show it, in both its sizes, and their pixels enlarged.
Column {
    id: sheet

    required property var icons

    spacing: 20

    Repeater {
        model: sheet.icons

        Row {
            id: row

            required property var modelData

            spacing: 24

            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: 90
                text: row.modelData.name
                color: VTheme.textMuted
                font: VFont.mono(11)
            }
            Repeater {
                model: [{ size: 22, zoom: 1 }, { size: 44, zoom: 1 }, { size: 22, zoom: 8 }, { size: 44, zoom: 4 }]

                Image {
                    required property var modelData

                    anchors.verticalCenter: parent.verticalCenter
                    source: row.modelData[modelData.size]
                    width: modelData.size * modelData.zoom
                    height: width
                    smooth: false
                }
            }
        }
    }
}
