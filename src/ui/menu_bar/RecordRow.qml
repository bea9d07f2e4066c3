import QtQuick
import Velmora.Kit

/// The head while everything works: which key to hold, and a recording to try.
PopoverHead {
    id: row

    required property string keyLabel

    title: "Записать"
    tooltip: keyText.truncated ? keyLabel : ""
    Accessible.description: keyLabel + ": " + (note ? hint + ". " + note : hint)

    badge: [
        VShadow {
            target: disc
            color: Qt.alpha(row.theme.accent, 0.3)
            radius: 10
            offsetY: 2
            cornerRadius: 16
        },
        VRoundedRect {
            id: disc

            width: 32
            height: 32
            radius: 16
            color: row.theme.accent

            VIconView {
                anchors.centerIn: parent
                icon: VIcon.micFill
                size: 16
                color: row.theme.onAccent
            }
        }
    ]
    end: VKeyCap {
        id: cap

        text: ""
        Accessible.name: row.keyLabel

        Text {
            id: keyText

            width: Math.min(implicitWidth, 110)
            text: row.keyLabel
            elide: Text.ElideRight
            color: cap.ink
            font: VFont.mono(cap.fontSize, VFont.Medium)
        }
    }
}
