import QtQuick
import Velmora.Kit

Item {
    implicitWidth: 480
    implicitHeight: 420

    VisualEffectBlur {
        anchors.fill: parent
    }
    Rectangle {
        anchors.fill: parent
        color: VTheme.windowBg
    }
    Column {
        anchors.fill: parent
        anchors.margins: 24
        spacing: 16

        VH1 { text: "Настройки" }
        VCard {
            width: parent.width
            verticalPadding: 6

            VRow {
                title: "Запускать при входе"
                hint: "Velmora стартует и сворачивается в строку меню"

                VToggle { on: true }
            }
            VHairline { width: parent.width }
            VRow {
                title: "Подсказывать запись при созвоне"
                hint: "Покажем баннер, когда заметим звонок в Zoom, Teams, Telegram, Meet…"

                VToggle {}
            }
            VHairline { width: parent.width }
            VRow {
                title: "Звук готовности"

                VSegmented { options: ["Нет", "Тихий", "Системный"]; selected: "Тихий" }
            }
            VHairline { width: parent.width }
            VRow {
                title: "Мин. длительность"
                hint: "Короткие нажатия игнорируются"

                VSlider { value: 0.3 }
            }
        }
        VCard {
            width: parent.width

            Text {
                text: "Карточка с текстом"
                color: VTheme.textMuted
                font: VFont.display(13)
            }
        }
    }
}
