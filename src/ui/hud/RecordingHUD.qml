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

        Part {
            active: hud.content.dot
            sourceComponent: LiveDot { size: hud.metrics.dotDiameter }
        }
        Part {
            active: hud.content.wave
            sourceComponent: VoiceWave { model: hud.model }
        }
        VRoundedRect {
            anchors.verticalCenter: parent.verticalCenter
            visible: hud.content.divider
            width: hud.metrics.dividerWidth
            height: hud.metrics.dividerHeight
            color: Qt.rgba(1, 1, 1, 0.18)
        }
        Line {
            width: Math.max(implicitWidth, hud.metrics.timerMinimumWidth)
            horizontalAlignment: Text.AlignHCenter
            text: hud.content.timer
            font: VFont.mono(hud.metrics.textSize, VFont.Semibold)
        }
        Line {
            width: Math.min(implicitWidth, hud.metrics.partialMaximumWidth, hud.metrics.contentMaximumWidth - x)
            horizontalAlignment: Text.AlignRight
            text: hud.content.partial
            elide: Text.ElideLeft
            font: VFont.display(hud.metrics.textSize, VFont.Regular)
            color: Qt.rgba(1, 1, 1, 0.92)
        }
        Part {
            active: hud.content.spinner
            sourceComponent: BloomSpinner {
                size: hud.metrics.spinnerDiameter
                accent: VTheme.accent
            }
        }
        Part {
            active: hud.content.cross
            sourceComponent: VIconView {
                icon: VIcon.xMark
                size: hud.metrics.crossSize
                color: "white"
            }
        }
        Line {
            width: Math.min(implicitWidth, hud.metrics.contentMaximumWidth - x)
            text: hud.content.status
            font: VFont.display(hud.metrics.textSize, VFont.Medium)
        }
    }

    component Part: Loader {
        anchors.verticalCenter: parent.verticalCenter
        visible: active
    }
    component Line: Text {
        anchors.verticalCenter: parent.verticalCenter
        visible: text !== ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: "white"
        Accessible.ignored: true // the capsule says it all
    }
}
