import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

/// One of many options, of which only the chosen one is in sight until the list is opened. `picked` says that the user chose
/// another.
T.ComboBox {
    id: menu

    property alias options: choices.options
    property alias selected: choices.selected
    property bool dark: VTheme.dark
    property string label
    signal picked(var option)

    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: 240
    implicitHeight: 30
    leftPadding: 12
    rightPadding: 30
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    model: choices.titles
    currentIndex: choices.index

    Accessible.name: label
    Accessible.description: displayText
    Accessible.onPressAction: if (enabled) popup.visible ? popup.close() : popup.open()
    Keys.onShortcutOverride: (event) => event.accepted = popup.visible && event.key === Qt.Key_Escape
    Keys.onEscapePressed: (event) => {
        event.accepted = popup.visible;
        popup.close();
    }
    Keys.onReleased: (event) => {
        event.accepted = (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !popup.visible && !event.isAutoRepeat;
        if (event.accepted)
            popup.open();
    }
    onActivated: (index) => choices.pick(index)
    onVisibleChanged: if (!visible) popup.close()
    onModelChanged: currentIndex = Qt.binding(() => choices.index) // other options put it to the first

    VChoice {
        id: choices

        onPicked: (value) => menu.picked(value)
    }

    contentItem: Text {
        text: menu.displayText
        color: menu.theme.text
        font: VFont.display(12, VFont.Medium)
        elide: Text.ElideMiddle
        verticalAlignment: Text.AlignVCenter
    }
    indicator: VIconView {
        x: menu.width - width - 10
        y: (menu.height - height) / 2
        icon: VIcon.chevUpDown
        size: 12
        color: menu.theme.textMuted
    }
    background: VRoundedRect {
        radius: 8
        color: menu.theme.inputBg
        borderColor: menu.hovered || menu.popup.visible ? menu.theme.textDim : menu.theme.hairlineStrong
        borderWidth: 1

        VFocusRing {
            dark: menu.dark
            corner: 8
            shown: menu.visualFocus && !menu.popup.visible
        }
    }
    delegate: T.ItemDelegate {
        id: entry

        required property int index
        required property string modelData

        width: ListView.view.width
        implicitHeight: 30
        leftPadding: 28
        rightPadding: 10
        hoverEnabled: true
        text: modelData
        highlighted: menu.highlightedIndex === index

        Accessible.name: text
        Accessible.onPressAction: {
            choices.pick(index);
            menu.popup.close();
        }

        contentItem: Text {
            text: entry.text
            color: menu.theme.text
            font: VFont.display(12, VFont.Medium)
            elide: Text.ElideMiddle
            verticalAlignment: Text.AlignVCenter
        }
        background: VRoundedRect {
            radius: 6
            color: entry.highlighted ? menu.theme.hairlineStrong : "transparent"

            VIconView {
                x: 9
                anchors.verticalCenter: parent.verticalCenter
                visible: choices.index === entry.index
                icon: VIcon.check
                size: 11
                color: menu.theme.text
            }
        }
    }
    popup: T.Popup {
        y: menu.height + 4
        width: menu.width
        height: Math.min(implicitHeight, (menu.Window.height || implicitHeight) - topMargin - bottomMargin)
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        margins: 8
        padding: 4
        closePolicy: T.Popup.CloseOnPressOutsideParent

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: menu.delegateModel
            currentIndex: menu.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: VScrollBar { dark: menu.dark }
        }
        background: Item {
            VShadow {
                target: panel
                color: Qt.rgba(0, 0, 0, 0.25)
                radius: 18
                cornerRadius: panel.radius
                offsetY: 5
            }
            VRoundedRect {
                id: panel

                anchors.fill: parent
                radius: 9
                color: Qt.alpha(menu.theme.windowBg, 1)
                borderColor: menu.theme.hairlineStrong
                borderWidth: 1
            }
        }
    }
}
