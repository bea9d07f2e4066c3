import QtQuick
import Velmora.Kit

/// A group of things that belong together, one under the other.
VRoundedRect {
    id: card

    default property alias content: column.data
    property alias spacing: column.spacing
    property bool dark: VTheme.dark
    property real padding: 16
    /// Above and below; rows have room of their own there, so a card of rows takes less.
    property real verticalPadding: padding

    implicitWidth: column.implicitWidth + 2 * padding
    implicitHeight: column.implicitHeight + 2 * verticalPadding
    radius: 12
    color: VTheme.scheme(dark).cardBg
    borderColor: VTheme.scheme(dark).hairline
    borderWidth: 1

    Column {
        id: column

        x: card.padding
        y: card.verticalPadding
        width: card.width - 2 * card.padding
    }
}
