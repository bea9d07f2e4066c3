import QtQuick
import Velmora.Kit

Sheet {
    Specimen {
        caption: "VMenu"

        VMenu { objectName: "focused"; options: ["правый Ctrl", "правый Alt"]; selected: "правый Ctrl" }
        VMenu { options: ["Микрофон с именем, которое длиннее всякой меры"]; selected: options[0] }
        VMenu { implicitWidth: 120; options: ["нет"]; selected: "нет"; enabled: false }
    }
    Specimen {
        caption: "VMenu.popup"

        VMenu {
            objectName: "opened"
            options: ["Системный по умолчанию", "Встроенное аудио Аналоговый стерео", "USB-микрофон",
                "Микрофон с именем, которое длиннее всякой меры"]
            selected: "USB-микрофон"
        }
        Item { width: 1; height: 150 }
    }
}
