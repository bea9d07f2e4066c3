import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The settings, over whatever the window shows.
FocusScope {
    id: root

    required property SettingsSheetModel model
    property bool dark: VTheme.dark
    signal closed()

    readonly property VTheme theme: VTheme.scheme(dark)
    readonly property real clearance: 12

    /// The keyboard comes to the tab that shows.
    function takeFocus() {
        view.focusTabs(Qt.OtherFocusReason);
    }
    function stepTab(by) {
        model.stepTab(by);
        view.focusTabs(Qt.TabFocusReason);
    }

    Accessible.role: Accessible.Dialog
    Accessible.name: "Настройки"

    Keys.onEscapePressed: closed()
    Keys.onPressed: (event) => {
        if (!(event.modifiers & Qt.ControlModifier))
            return;
        const steps = {
            [Qt.Key_Tab]: event.modifiers & Qt.ShiftModifier ? -1 : 1,
            [Qt.Key_Backtab]: -1,
            [Qt.Key_PageUp]: -1,
            [Qt.Key_PageDown]: 1
        };
        if (event.key in steps) {
            stepTab(steps[event.key]);
            event.accepted = true;
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, root.dark ? 0.45 : 0.22)

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onClicked: root.closed()
            onWheel: (wheel) => wheel.accepted = true
        }
    }
    VShadow {
        target: card
        color: Qt.rgba(0, 0, 0, 0.3)
        radius: 40
        cornerRadius: card.radius
        offsetY: 12
    }
    VRoundedRect {
        id: card

        objectName: "settingsCard"
        x: Math.round((root.width - width) / 2)
        y: Math.round((root.height - height) / 2)
        width: Math.min(760, root.width - 2 * root.clearance)
        height: Math.min(600, root.height - 2 * root.clearance)
        radius: 16
        color: Qt.alpha(root.theme.windowBg, 1)
        borderColor: root.theme.hairlineStrong
        borderWidth: 1

        MouseArea {
            anchors.fill: parent
        }
        AccountHeader {
            id: header

            x: 24
            width: parent.width - x - close.width - 32
            model: root.model.account
            dark: root.dark
        }
        VIconBtn {
            id: close

            anchors.right: parent.right
            anchors.rightMargin: 18
            anchors.verticalCenter: header.verticalCenter
            icon: VIcon.xMark
            tooltip: "Закрыть"
            dark: root.dark
            onAction: root.closed()
        }
        VHairline {
            id: rule

            x: 1
            y: header.height
            width: parent.width - 2
            dark: root.dark
        }
        SettingsView {
            id: view

            x: 1
            y: header.height + 1
            width: parent.width - 2
            height: parent.height - y - 1
            model: root.model
            dark: root.dark
        }
    }
}
