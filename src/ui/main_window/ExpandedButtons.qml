import QtQuick
import Velmora.Kit
import Velmora.MainWindow

/// What can be done with the open dictation, in words as long as there is room for.
Item {
    id: root

    property bool dark: VTheme.dark
    signal copyCleaned()
    signal copyRaw()
    signal removed()

    /// What the long titles take, measured while they are shown.
    property real roomForLong: 0
    readonly property bool brief: width < roomForLong

    implicitHeight: row.implicitHeight

    function pressCopyCleaned() {
        cleaned.succeed();
        copyCleaned();
    }

    Row {
        id: row

        spacing: 8
        onImplicitWidthChanged: {
            if (!root.brief)
                root.roomForLong = implicitWidth;
        }

        VButton {
            id: cleaned

            title: root.brief ? "Чистый" : "Копировать чистый"
            icon: VIcon.copy
            primary: true
            dark: root.dark
            showSuccessFeedback: true
            successTitle: "Скопировано"
            onAction: root.copyCleaned()
        }
        VButton {
            title: root.brief ? "Сырой" : "Копировать сырой"
            icon: VIcon.copy
            dark: root.dark
            showSuccessFeedback: true
            successTitle: "Скопировано"
            onAction: root.copyRaw()
        }
        VButton {
            title: "Удалить"
            icon: VIcon.trash
            ghost: true
            dark: root.dark
            onAction: root.removed()
        }
    }
}
