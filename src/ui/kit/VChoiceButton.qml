import QtQuick
import Velmora.Kit

/// One option of a choice. The arrows go to its neighbours, and Tab stops once for them all.
VPlainButton {
    id: button

    required property VChoice choice
    required property int index
    readonly property bool chosen: choice.index === index

    focusPolicy: chosen || (choice.index < 0 && index === 0) ? Qt.StrongFocus : Qt.ClickFocus
    text: choice.titles[index]

    Accessible.role: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: chosen
    Keys.onLeftPressed: choice.step(-1)
    Keys.onUpPressed: choice.step(-1)
    Keys.onRightPressed: choice.step(1)
    Keys.onDownPressed: choice.step(1)
    onClicked: choice.pick(index)

    Connections {
        target: button.choice
        function onStepped(index) {
            if (index === button.index)
                button.forceActiveFocus(Qt.TabFocusReason);
        }
    }
}
