import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// One dictation: when, into which application, what, how long.
VPlainButton {
    id: root

    required property string time
    required property string tag
    required property string preview
    required property string duration
    /// Says for a moment that its text was copied.
    property bool copied: false

    readonly property VTheme theme: VTheme.scheme(dark)

    activeFocusOnTab: false
    radius: 10
    opacity: 1 // also under the settings

    contentItem: Item {
        Text {
            id: time

            x: 14
            width: 36
            anchors.verticalCenter: parent.verticalCenter
            text: root.time
            color: root.theme.textMuted
            font: VFont.mono(11)
        }
        MetaDot {
            x: 56
            dark: root.dark
        }
        TagPill {
            x: 67
            anchors.verticalCenter: parent.verticalCenter
            name: root.tag
            dark: root.dark
        }
        Text {
            x: 148
            width: duration.x - x - 16
            anchors.verticalCenter: parent.verticalCenter
            text: root.preview
            color: root.theme.text
            font: VFont.display(13)
            lineHeight: 18
            lineHeightMode: Text.FixedHeight
            maximumLineCount: 2
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            textFormat: Text.PlainText
        }
        Text {
            id: duration

            anchors.right: parent.right
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            text: root.copied ? "Скопировано" : root.duration
            color: root.copied ? root.theme.green : root.theme.textMuted
            font: root.copied ? VFont.display(11, VFont.Medium) : VFont.mono(11)
        }
    }
    background: VRoundedRect {
        radius: root.radius
        color: root.down ? root.theme.hairlineStrong : root.hovered ? root.theme.hairline : root.theme.surface
    }
}
