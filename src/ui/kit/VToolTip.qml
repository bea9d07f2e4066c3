import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// A word on what is under the pointer. It lies under its parent, or over it where there is no room, and never
/// leaves the window.
T.ToolTip {
    id: tip

    property bool dark: VTheme.dark
    readonly property real below: parent ? parent.height + 6 : 0
    readonly property bool fitsBelow: !parent || !parent.Window.window || parent.mapToItem(null, 0, below).y
        + implicitHeight + margins <= parent.Window.window.height

    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: fitsBelow ? below : -implicitHeight - 6
    margins: 6
    horizontalPadding: 8
    verticalPadding: 5
    implicitWidth: Math.min(label.implicitWidth + leftPadding + rightPadding, 280)
    implicitHeight: label.implicitHeight + topPadding + bottomPadding
    delay: 600
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Text {
        id: label

        text: tip.text
        color: VTheme.scheme(tip.dark).text
        font: VFont.display(11.5)
        wrapMode: Text.Wrap
    }
    background: Item {
        VShadow {
            target: panel
            color: Qt.rgba(0, 0, 0, 0.25)
            radius: 12
            cornerRadius: panel.radius
            offsetY: 3
        }
        VRoundedRect {
            id: panel

            anchors.fill: parent
            radius: 6
            color: Qt.alpha(VTheme.scheme(tip.dark).windowBg, 1)
            borderColor: VTheme.scheme(tip.dark).hairlineStrong
            borderWidth: 1
        }
    }
}
