import QtQuick
import Velmora.Kit

/// The head while a right is missing.
PopoverHead {
    id: row

    title: "Глобальная запись выключена"
    titleSize: 12.5
    hintSize: 10.5

    badgeSize: 28
    end: VIconView {
        icon: VIcon.chevRight
        size: 12
        color: row.theme.textDim
    }

    VRoundedRect {
        anchors.fill: parent
        radius: 8
        color: Qt.alpha(row.theme.amber, 0.16)

        VIconView {
            anchors.centerIn: parent
            icon: VIcon.lock
            size: 13
            color: row.theme.amber
        }
    }
}
