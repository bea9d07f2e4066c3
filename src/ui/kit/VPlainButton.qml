import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// What all buttons share: pressed by pointer, Space and Enter, a wash under the pointer, a ring for the keyboard, a
/// tool tip. Its look is the `contentItem` of whoever uses it; `text` is its name for those who listen.
T.AbstractButton {
    id: button

    property bool dark: VTheme.dark
    property real radius: 8
    property string tooltip
    property int tooltipDelay: 600
    readonly property VToolTip shownTip: tip.item as VToolTip

    // Not again while the key is held.
    function press(event) {
        if (!event.isAutoRepeat)
            clicked();
    }

    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45

    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onEnterPressed: (event) => press(event)
    Keys.onReturnPressed: (event) => press(event)

    background: VWash {
        dark: button.dark
        radius: button.radius
        hovered: button.hovered
        down: button.down
    }

    VFocusRing {
        dark: button.dark
        corner: button.radius
        shown: button.visualFocus
    }
    Loader {
        id: tip

        anchors.fill: parent
        active: button.tooltip !== "" && !button.down && (button.hovered || button.visualFocus)
        sourceComponent: VToolTip {
            dark: button.dark
            text: button.tooltip
            delay: button.tooltipDelay
            Component.onCompleted: open()
        }
    }
}
