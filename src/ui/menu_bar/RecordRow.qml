import QtQuick
import Velmora.Kit

/// The head while everything works: which key to hold, and a recording to try.
PopoverHead {
    id: row

    required property string keyLabel

    title: "Записать"

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
}
