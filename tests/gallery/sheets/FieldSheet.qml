import QtQuick
import Velmora.Kit

Sheet {
    Specimen {
        caption: "VField"

        VField { placeholder: "Поиск по истории"; icon: VIcon.search }
        VField { value: "Мария Ковалёва" }
    }
    Specimen {
        caption: "VField · mono, secure"

        VField { value: "sk-2026-01-01"; mono: true }
        VField { value: "не скажу"; secure: true; icon: VIcon.lock }
    }
    Specimen {
        caption: "VField · с выделением, недоступное"

        VField { objectName: "field"; value: "выделенное слово" }
        VField { value: "Нельзя"; enabled: false }
    }
    Specimen {
        caption: "VField · длинное"

        VField { width: 160; placeholder: "Очень длинная подсказка не помещается" }
        VField { width: 160; value: "Очень длинный текст тоже не помещается" }
    }
}
