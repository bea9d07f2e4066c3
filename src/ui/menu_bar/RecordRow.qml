import QtQuick
import Velmora.Kit

/// The head while everything works: which key to hold, and a recording to try.
PopoverHead {
    id: row

    required property string keyLabel

    title: "Записать"
    badgeSize: 32
    tooltip: keyText.truncated ? keyLabel : ""
    Accessible.description: keyLabel + ": " + (note ? hint + ". " + note : hint)

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

    VShadow {
        target: disc
        color: Qt.alpha(row.theme.accent, 0.3)
        radius: 10
        offsetY: 2
        cornerRadius: disc.radius
    }
    VRoundedRect {
        id: disc

        anchors.fill: parent
        radius: width / 2
        color: row.theme.accent

        VIconView {
            anchors.centerIn: parent
            icon: VIcon.micFill
            size: 16
            color: row.theme.onAccent
        }
    }
}
