import QtQuick
import Velmora.Hud
import Velmora.Kit

/// The voice in the style that the settings ask for. Bars may overshoot the frame.
Item {
    id: wave

    required property RecordingHUDModel model
    readonly property Item drawing: loader.item as Item

    implicitWidth: model.style === RecordingHUDModel.Dots && drawing ? drawing.implicitWidth : model.metrics.waveWidth
    implicitHeight: model.metrics.waveHeight

    Loader {
        id: loader

        anchors.centerIn: parent
        sourceComponent: wave.model.style === RecordingHUDModel.Curve ? curve
            : wave.model.style === RecordingHUDModel.Dots ? dots : bars
    }
    Component {
        id: bars

        LiveBars {
            width: wave.model.metrics.waveWidth
            height: implicitHeight
            source: wave.model.voice
            waveHeight: wave.model.metrics.waveHeight
            color: VTheme.accent
            barWidth: 3
            spacing: 2
        }
    }
    Component {
        id: dots

        WaveDots {
            width: implicitWidth
            height: implicitHeight
            source: wave.model.voice
            waveHeight: wave.model.metrics.waveHeight
            maximumWidth: wave.model.metrics.dotsMaximumWidth
            color: VTheme.accent
            spacing: 4
        }
    }
    Component {
        id: curve

        WaveCurve {
            width: wave.model.metrics.waveWidth
            height: wave.model.metrics.waveHeight
            source: wave.model.voice
            color: VTheme.accent
        }
    }
}
