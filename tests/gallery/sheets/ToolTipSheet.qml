import QtQuick
import Velmora.Kit

/// A long tool tip in the corner of a window.
Item {
    VIconBtn {
        objectName: "hovered"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        icon: VIcon.info
        tooltip: "Показывает, сколько ещё слов можно надиктовать до конца месяца, если тариф бесплатный"
        tooltipDelay: 0
    }
}
