import QtQuick
import Velmora.Kit
import Velmora.MenuBar

/// The popup of the tray icon.
FocusScope {
    id: view

    required property MenuBarPopoverModel popover
    /// Without a compositor there is nothing to throw a shadow on, and the window is cut to the corners.
    property bool seeThrough: true
    readonly property alias cornerRadius: card.radius

    implicitWidth: 320
    implicitHeight: rows.y + rows.height + 6
    focus: true

    Accessible.role: Accessible.PopupMenu
    Accessible.name: "Velmora"

    function moveFocus(forward) {
        const from = Window.activeFocusItem ?? view;
        from.nextItemInFocusChain(forward).forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    Keys.onDownPressed: moveFocus(true)
    Keys.onUpPressed: moveFocus(false)
    Keys.onEscapePressed: popover.dismissed()

    VShadow {
        visible: view.seeThrough
        target: card
        color: Qt.rgba(0, 0, 0, 0.3)
        radius: 20
        offsetY: 10
        cornerRadius: card.radius
    }
    VRoundedRect {
        id: card

        anchors.fill: parent
        radius: 14
        color: Qt.alpha(VTheme.windowBg, 1)
        borderColor: VTheme.dark ? Qt.rgba(1, 1, 1, 0.08) : Qt.alpha(VTheme.text, 0.06)
        borderWidth: 0.5
    }
    Loader {
        id: head

        x: 6
        y: 6
        width: view.width - 12
        sourceComponent: view.popover.canRecord ? recordRow : warningRow
    }
    Column {
        id: rows

        x: 6
        y: head.y + head.height
        width: head.width

        Repeater {
            model: view.popover.rows

            Column {
                id: entry

                required property var modelData

                width: rows.width

                Item {
                    visible: entry.modelData.separated
                    width: parent.width
                    height: 9

                    VHairline {
                        anchors.verticalCenter: parent.verticalCenter
                        x: 10
                        width: parent.width - 20
                    }
                }
                MenuItemRow {
                    width: parent.width
                    symbol: entry.modelData.icon
                    label: entry.modelData.label
                    shortcut: entry.modelData.shortcut
                    muted: entry.modelData.muted
                    onClicked: view.popover.chosen(entry.modelData.action)
                }
            }
        }
    }

    Component {
        id: recordRow

        RecordRow {
            keyLabel: view.popover.hotkeyLabel
            hint: view.popover.recordHint
            note: view.popover.standInNote
            onClicked: view.popover.chosen(view.popover.headAction)
        }
    }
    Component {
        id: warningRow

        WarningRow {
            hint: view.popover.warningHint
            onClicked: view.popover.chosen(view.popover.headAction)
        }
    }
}
