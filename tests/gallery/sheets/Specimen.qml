import QtQuick
import Velmora.Kit

/// Some states of a control, side by side, under their caption.
Column {
    id: specimen

    required property string caption
    default property alias content: row.data

    spacing: 8

    Text {
        text: specimen.caption
        color: VTheme.textDim
        font: VFont.mono(10)
    }
    Row {
        id: row

        spacing: 12
    }
}
