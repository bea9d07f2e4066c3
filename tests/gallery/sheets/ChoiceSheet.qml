import QtQuick
import Velmora.Kit

Sheet {
    Specimen {
        caption: "VSegmented"

        VSegmented { options: ["Сегодня", "7 дней", "Всё"]; selected: "7 дней" }
        VSegmented { options: ["Полосы", "Волна", "Точки"]; selected: "Полосы"; gradient: true }
        VSegmented { options: [1, 2, 3]; selected: 3; enabled: false }
    }
    Specimen {
        caption: "VToggle"

        VToggle { on: true }
        VToggle {}
        VToggle { on: true; enabled: false }
        VToggle { enabled: false }
    }
    Specimen {
        caption: "VSlider"

        VSlider { value: 0.35 }
        VSlider { value: 0.7; gradient: true }
        VSlider { value: 0.5; enabled: false }
    }
    Specimen {
        caption: "VPillNav"

        VPillNav {
            width: 560
            selected: "recording"
            items: [{ id: "general", label: "Общие", icon: VIcon.gear },
                { id: "recording", label: "Запись", icon: VIcon.mic },
                { id: "ai", label: "Обработка", icon: VIcon.sparkle, tint: VTheme.amber },
                { id: "integrations", label: "Интеграции", icon: VIcon.link },
                { id: "storage", label: "Хранение", icon: VIcon.folder },
                { id: "permissions", label: "Разрешения", icon: VIcon.lock, tint: VTheme.green },
                { id: "about", label: "О программе" }]
        }
    }
    Specimen {
        caption: "VChip"

        VChip { label: "Velmora" }
        VChip { label: "Разрешено"; ok: true }
        VChip { label: "Нет доступа"; ok: false }
        VChip { label: "Скоро"; tint: VTheme.amber }
        VChip { label: "Новое"; tint: VTheme.accent }
    }
    Specimen {
        caption: "VKeyCap"

        VKeyCap { text: "Fn" }
        VKeyCap { text: "⌥ Space" }
        VKeyCap { text: "Правый Ctrl" }
        VKeyCap { text: "Fn"; gradient: true }
        VKeyCap { text: "Fn"; fontSize: 18 }
        VKeyCap { Item { width: 14; height: 14; VIconView { icon: VIcon.command; size: 14; color: VTheme.text } } }
    }
}
