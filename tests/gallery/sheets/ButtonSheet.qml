import QtQuick
import Velmora.Kit

Sheet {
    Specimen {
        caption: "VButton · md"

        VButton { title: "Записать"; icon: VIcon.micFill; primary: true }
        VButton { title: "Копировать"; icon: VIcon.copy }
        VButton { title: "Отмена"; ghost: true }
        VButton { title: "Нельзя"; primary: true; enabled: false }
        VButton { title: "Нельзя"; enabled: false }
    }
    Specimen {
        caption: "VButton · sm"

        VButton { title: "Записать"; icon: VIcon.micFill; primary: true; size: VButtonSize.Sm }
        VButton { title: "Копировать"; icon: VIcon.copy; size: VButtonSize.Sm }
        VButton { title: "Отмена"; ghost: true; size: VButtonSize.Sm }
        VButton { title: "Нельзя"; enabled: false; size: VButtonSize.Sm }
    }
    Specimen {
        caption: "VButton · показал успех"

        VButton { title: "Копировать"; successTitle: "Скопировано"; showSuccessFeedback: true }
        VButton { title: "Копировать"; successTitle: "Скопировано"; showSuccessFeedback: true; didSucceed: true }
        VButton { title: "Сохранить"; primary: true; showSuccessFeedback: true; didSucceed: true }
    }
    Specimen {
        caption: "VIconBtn"

        VIconBtn { icon: VIcon.copy; label: "Копировать" }
        VIconBtn { icon: VIcon.trash; danger: true; label: "Удалить" }
        VIconBtn { icon: VIcon.xMark; label: "Закрыть"; enabled: false }
        VIconBtn { objectName: "hovered"; icon: VIcon.gear; tooltip: "Настройки"; tooltipDelay: 0 }
    }
    Specimen {
        caption: "Фокус клавиатуры"

        VButton { objectName: "focused"; title: "Записать"; primary: true }
    }
    Specimen {
        caption: "AsanaBrandButton, GoogleDriveBrandButton"

        AsanaBrandButton { title: "Подключить Asana" }
        GoogleDriveBrandButton { title: "Подключить Google Drive" }
    }
}
