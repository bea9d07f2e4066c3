import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// One option of a choice. The arrows go to its neighbours, and Tab stops once for them all.
T.RadioButton {
    id: button

    required property VChoice choice
    required property int index
    readonly property bool chosen: choice.index === index
    property bool dark: VTheme.dark
    property real radius: 8

    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight
    hoverEnabled: true
    focusPolicy: chosen || activeFocus || (choice.index < 0 && index === 0) ? Qt.StrongFocus : Qt.ClickFocus
    text: choice.titles[index]
    checked: chosen

    Accessible.name: text
    Accessible.onPressAction: if (enabled) choice.pick(index)
    Accessible.onToggleAction: if (enabled) choice.pick(index)
    Keys.onEnterPressed: choice.pick(index)
    Keys.onReturnPressed: choice.pick(index)
    Keys.onLeftPressed: choice.step(-1)
    Keys.onUpPressed: choice.step(-1)
    Keys.onRightPressed: choice.step(1)
    Keys.onDownPressed: choice.step(1)
    onClicked: choice.pick(index)

    VFocusRing {
        dark: button.dark
        corner: button.radius
        shown: button.visualFocus
    }
    Connections {
        target: button.choice
        function onStepped(index) {
            if (index === button.index)
                button.forceActiveFocus(Qt.TabFocusReason);
        }
    }
}
