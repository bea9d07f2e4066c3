import QtQuick
import Velmora.Kit

Grid {
    columns: 4
    columnSpacing: 16
    rowSpacing: 12

    Repeater {
        model: ["windowBg", "surface", "cardBg", "inputBg", "text", "textMuted", "textDim", "hairline", "hairlineStrong",
            "accent", "accentSoft", "onAccent", "red", "green", "amber"]

        Row {
            id: row

            required property string modelData

            spacing: 8
            width: 150

            VRoundedRect {
                width: 32
                height: 32
                radius: 8
                color: VTheme[row.modelData]
                borderColor: VTheme.hairlineStrong
                borderWidth: 1
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: row.modelData
                color: VTheme.text
                font: VFont.mono(11)
            }
        }
    }
}
