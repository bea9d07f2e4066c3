import QtQuick
import Velmora.Kit
import Velmora.Onboarding

/// The bars of the logo, moved as by a voice.
BrandWave {
    id: wave

    property bool dark: VTheme.dark
    property bool running: false

    color: VTheme.scheme(dark).accent

    NumberAnimation {
        objectName: "timeline"
        target: wave
        property: "phase"
        running: wave.running
        loops: Animation.Infinite
        from: 0
        to: 1
        duration: 2200
    }
}
