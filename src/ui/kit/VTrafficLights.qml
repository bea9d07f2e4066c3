import QtQuick
import Velmora.Kit

/// The buttons of a window that has no frame of its own.
Row {
    id: lights

    property bool dark: VTheme.dark
    signal closeRequested()
    signal minimizeRequested()
    signal zoomRequested()

    readonly property VTheme theme: VTheme.scheme(dark)

    spacing: 8

    component Light: VPlainButton {
        id: light

        required property color tint

        implicitWidth: 12
        implicitHeight: 12
        radius: 6
        dark: lights.dark
        background: VRoundedRect {
            radius: 6
            color: light.hovered || light.visualFocus ? light.tint : Qt.alpha(light.tint, 0.75)
            borderColor: lights.theme.hairlineStrong
            borderWidth: 0.5
        }
    }

    Light {
        text: "Закрыть"
        tint: lights.theme.red
        onClicked: lights.closeRequested()
    }
    Light {
        text: "Свернуть"
        tint: lights.theme.amber
        onClicked: lights.minimizeRequested()
    }
    Light {
        text: "Развернуть"
        tint: lights.theme.green
        onClicked: lights.zoomRequested()
    }
}
