import QtQuick
import Velmora.Kit
import Velmora.Settings

/// How loud it is now: bars that light up from the left.
LevelBarRow {
    id: meter

    property bool dark: VTheme.dark

    color: VTheme.scheme(dark).accent

    Accessible.role: Accessible.Indicator
    Accessible.name: "Уровень микрофона"
}
