import QtQuick
import Velmora.Hud
import Velmora.Kit

/// The capsule that floats over all windows while a dictation runs.
Item {
    id: hud

    required property RecordingHUDModel model
    /// The capsule's place in the panel.
    readonly property rect capsuleRect: Qt.rect(capsule.x, capsule.y, capsule.width, capsule.height)
    readonly property hudMetrics metrics: model.metrics
    readonly property hudContent content: model.content

    implicitWidth: metrics.panelWidth
    implicitHeight: metrics.panelHeight

    CapsuleBackdrop {
        anchors.fill: parent
        capsule: hud.capsuleRect
        accent: VTheme.accent
        strong: hud.content.strongGlow
        minimal: hud.model.minimal
    }

    VRoundedRect {
        id: capsule

        anchors.centerIn: parent
        width: 2 * Math.ceil(row.implicitWidth / 2 + hud.metrics.capsulePadding) // begins on a whole pixel
        height: hud.metrics.capsuleHeight
        radius: height / 2
        color: Qt.rgba(14 / 255, 18 / 255, 20 / 255, 0.86)
        borderColor: Qt.rgba(1, 1, 1, 0.1)
        borderWidth: 0.5
        Accessible.role: Accessible.StaticText
        Accessible.name: hud.content.spoken
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: hud.metrics.itemSpacing

        LiveDot {
            anchors.verticalCenter: parent.verticalCenter
            visible: hud.content.dot
            size: hud.metrics.dotDiameter
        }
        Loader {
            anchors.verticalCenter: parent.verticalCenter
            active: hud.content.wave
            visible: active
            sourceComponent: VoiceWave { model: hud.model }
        }
        VRoundedRect {
            anchors.verticalCenter: parent.verticalCenter
            visible: hud.content.divider
            width: 0.5
            height: hud.metrics.dividerHeight
            color: Qt.rgba(1, 1, 1, 0.18)
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            width: Math.max(implicitWidth, hud.metrics.timerMinimumWidth)
            horizontalAlignment: Text.AlignHCenter
            text: hud.content.timer
            font: VFont.mono(hud.metrics.textSize, VFont.Semibold)
            color: "white"
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            width: Math.min(implicitWidth, hud.metrics.partialMaximumWidth)
            horizontalAlignment: Text.AlignRight
            text: hud.content.partial
            textFormat: Text.PlainText
            elide: Text.ElideLeft
            maximumLineCount: 1
            font: VFont.display(hud.metrics.textSize, VFont.Regular)
            color: Qt.rgba(1, 1, 1, 0.92)
        }
        BloomSpinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: hud.content.spinner
            size: hud.metrics.spinnerDiameter
            accent: VTheme.accent
        }
        VIconView {
            anchors.verticalCenter: parent.verticalCenter
            visible: hud.content.cross
            icon: VIcon.xMark
            size: hud.metrics.crossSize
            color: "white"
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            width: Math.min(implicitWidth, hud.metrics.messageMaximumWidth)
            text: hud.content.status
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            font: VFont.display(hud.metrics.textSize, VFont.Medium)
            color: "white"
        }
    }
}
