import QtQuick
import Velmora.Kit
import Velmora.Settings

/// How the server treats what was said.
Column {
    id: root

    required property AISettingsModel model
    property bool dark: VTheme.dark

    readonly property bool loaded: model.page === AISettingsModel.Loaded

    spacing: 12

    Component.onCompleted: model.setSeen(visible)
    Component.onDestruction: model.setSeen(false)
    onVisibleChanged: model.setSeen(visible)

    Text {
        width: parent.width
        topPadding: 28
        visible: !root.loaded
        text: root.model.page === AISettingsModel.SignedOut
            ? "Войди в аккаунт во вкладке «Общие», чтобы настроить язык транскрипции и очистку."
            : "Загружаем настройки…"
        color: VTheme.scheme(root.dark).textMuted
        font: VFont.display(13)
        lineHeight: 1.2
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Loader {
        width: parent.width
        active: root.loaded
        visible: active
        sourceComponent: preferencesCard
    }
    Loader {
        width: parent.width
        active: root.loaded
        visible: active
        sourceComponent: privacyCard
    }

    Component {
        id: preferencesCard

        VCard {
            verticalPadding: 6
            dark: root.dark

            VRow {
                title: "Язык транскрипции"
                dark: root.dark

                VSegmented {
                    options: root.model.languages
                    selected: root.model.language
                    dark: root.dark
                    onPicked: (option) => root.model.language = option
                }
            }
            SettingsRule {
                dark: root.dark
            }
            VRow {
                title: "Очищать текст"
                hint: "Velmora приведёт текст в порядок перед вставкой. Задержка +1–2 с."
                dark: root.dark

                VToggle {
                    on: root.model.cleanupEnabled
                    dark: root.dark
                    onToggled: root.model.cleanupEnabled = on
                }
            }
            SettingsRule {
                dark: root.dark
            }
            VRow {
                title: "Режим разработчика"
                hint: "Сохраняет английские термины (React, hooks, API) без перевода"
                dark: root.dark

                VToggle {
                    on: root.model.devModeEnabled
                    dark: root.dark
                    onToggled: root.model.devModeEnabled = on
                }
            }
        }
    }
    Component {
        id: privacyCard

        VCard {
            verticalPadding: 6
            dark: root.dark

            VRow {
                title: "Аудио не хранится"
                hint: "Запись отправляется только на распознавание и сразу удаляется. На устройстве остаётся лишь готовый текст."
                dark: root.dark

                VIconView {
                    icon: VIcon.lock
                    size: 18
                    color: VTheme.scheme(root.dark).green
                }
            }
        }
    }
}
