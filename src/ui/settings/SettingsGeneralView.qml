import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The settings of the program as a whole.
VCard {
    id: root

    required property GeneralSettingsModel model

    verticalPadding: 6

    VRow {
        title: "Акцентный цвет"
        dark: root.dark

        ThemeSwatches {
            accents: root.model.accents
            selected: root.model.accent
            dark: root.dark
            onPicked: (label) => root.model.accent = label
        }
    }
    SettingsRule {
        dark: root.dark
    }
    VRow {
        title: "Запускать при входе"
        hint: "Velmora стартует и сворачивается в строку меню"
        dark: root.dark

        VToggle {
            on: root.model.launchAtLogin
            dark: root.dark
            onToggled: root.model.launchAtLogin = on
        }
    }
    SettingsRule {
        dark: root.dark
    }
    VRow {
        title: "Индикатор записи"
        hint: "Показывать капсулу под notch"
        dark: root.dark

        VToggle {
            on: root.model.showHUD
            dark: root.dark
            onToggled: root.model.showHUD = on
        }
    }
    SettingsRule {
        dark: root.dark
    }
    VRow {
        title: "Звук готовности"
        hint: "Когда текст вставлен"
        dark: root.dark

        VSegmented {
            options: root.model.readySounds
            selected: root.model.readySound
            dark: root.dark
            onPicked: (option) => root.model.readySound = option
        }
    }
}
