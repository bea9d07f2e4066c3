import QtQuick
import QtQuick.Templates as T
import Velmora.Kit
import Velmora.Settings

/// The settings of the dictation: the hotkey, the microphone and the capsule.
Item {
    id: root

    required property RecordingSettingsModel model
    property bool dark: VTheme.dark

    readonly property bool windowActive: Window.active
    readonly property VTheme theme: VTheme.scheme(dark)

    implicitWidth: 660
    implicitHeight: cards.implicitHeight

    Component.onDestruction: if (model) model.onScreen = false
    onWindowActiveChanged: if (!windowActive) model.hotkey.stopCapture()

    VOnScreen {
        anchors.fill: parent
        onShownChanged: root.model.onScreen = shown
    }
    Column {
        id: cards

        width: root.width
        spacing: 12

        Card {
            HotkeyBlock {
                width: parent.width
                model: root.model.hotkey
                dark: root.dark
            }
            Rule {}
            VRow {
                title: "Режим"
                dark: root.dark

                VSegmented {
                    options: root.model.modes
                    selected: root.model.mode
                    dark: root.dark
                    onPicked: (label) => root.model.mode = label
                }
            }
        }
        Card {
            VRow {
                title: "Микрофон"
                hint: root.model.microphoneHint
                dark: root.dark

                VMenu {
                    objectName: "microphones"
                    implicitWidth: 280
                    options: root.model.microphones
                    selected: root.model.microphone
                    dark: root.dark
                    onPicked: (uniqueID) => root.model.microphone = uniqueID
                }
            }
            Rule {}
            VRow {
                title: "Проверка микрофона"
                hint: root.model.levelHint
                dark: root.dark

                LevelMeter {
                    level: root.model.voice.level
                    opacity: root.model.levelFails ? 0.4 : 1
                    dark: root.dark
                }
            }
            Rule {}
            VRow {
                title: "Мин. длительность"
                hint: "Короткие нажатия игнорируются"
                dark: root.dark

                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 40
                    text: root.model.minDurationText
                    color: root.theme.text
                    font: VFont.display(12, VFont.Medium)
                    horizontalAlignment: Text.AlignRight
                }
                VSlider {
                    anchors.verticalCenter: parent.verticalCenter
                    implicitWidth: 180
                    from: root.model.shortestMinDuration
                    to: root.model.longestMinDuration
                    stepSize: root.model.minDurationStep
                    snapMode: T.Slider.SnapAlways
                    value: root.model.minDuration
                    dark: root.dark
                    onMoved: root.model.minDuration = value
                }
            }
        }
        Card {
            Item {
                width: parent.width
                height: root.model.previewHeight + 18

                CapsulePreview {
                    y: 10
                    width: parent.width
                    height: root.model.previewHeight
                    opacity: root.model.showHUD ? 1 : 0.35
                    capsule: root.model.capsule
                    capsuleY: root.model.capsuleY
                    dark: root.dark
                }
            }
            VRow {
                title: "Показывать индикатор"
                hint: "Капсула под notch/наверху экрана"
                dark: root.dark

                VToggle {
                    on: root.model.showHUD
                    dark: root.dark
                    onToggled: root.model.showHUD = on
                }
            }
            Rule {}
            VRow {
                title: "Стиль волны"
                hint: "Как выглядит индикация голоса"
                dark: root.dark

                VSegmented {
                    options: root.model.hudStyles
                    selected: root.model.hudStyle
                    dark: root.dark
                    onPicked: (label) => root.model.hudStyle = label
                }
            }
            Rule {}
            VRow {
                title: "Размер"
                dark: root.dark

                VSegmented {
                    options: root.model.hudSizes
                    selected: root.model.hudSize
                    dark: root.dark
                    onConfirmed: (label) => root.model.hudSize = label
                }
            }
            Rule {}
            VRow {
                title: "Положение"
                hint: "Где показывать индикатор на экране"
                dark: root.dark

                VSegmented {
                    options: root.model.hudPositions
                    selected: root.model.hudPosition
                    dark: root.dark
                    onConfirmed: (label) => root.model.hudPosition = label
                }
            }
            Rule {}
            VRow {
                title: "Минимальный вид"
                hint: "Только волна — без таймера и точки"
                dark: root.dark

                VToggle {
                    on: root.model.hudMinimal
                    dark: root.dark
                    onToggled: root.model.hudMinimal = on
                }
            }
        }
        Card {
            VRow {
                title: "Подсказывать запись при созвоне"
                hint: "Покажем баннер, когда заметим звонок в Zoom, Teams, Telegram, Meet…"
                dark: root.dark

                VToggle {
                    on: root.model.callDetection
                    dark: root.dark
                    onToggled: root.model.callDetection = on
                }
            }
        }
    }

    component Card: VCard {
        width: cards.width
        verticalPadding: 4
        dark: root.dark
    }
    component Rule: SettingsRule {
        dark: root.dark
    }
}
