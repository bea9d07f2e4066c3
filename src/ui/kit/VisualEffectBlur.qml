import QtQuick
import Velmora.Kit

/// What lies under a window's own colour. The desktop gives no blurred picture of what is behind a window, so this is a calm, opaque
/// ground for every `material` and `blendingMode`.
Rectangle {
    property bool dark: VTheme.dark
    property string material: "window"
    property string blendingMode: "behindWindow"

    readonly property VTheme theme: VTheme.scheme(dark)

    color: Qt.tint(Qt.alpha(theme.windowBg, 1), theme.hairlineStrong)
}
