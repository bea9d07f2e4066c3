import QtQuick
import Velmora.Kit
import Velmora.Settings

/// The tabs of the settings, and the one that is chosen. Each is made when it is first asked for, and kept.
FocusScope {
    id: root

    required property SettingsSheetModel model
    property bool dark: VTheme.dark

    readonly property string tab: model.tab
    readonly property var views: ({
        general: general,
        recording: recording,
        ai: ai,
        permissions: permissions,
        about: about
    })

    onVisibleChanged: scroll.contentY = 0
    onTabChanged: scroll.contentY = 0

    function focusTabs(reason) {
        nav.takeFocus(reason);
    }

    VPillNav {
        id: nav

        x: 23
        y: 14
        width: parent.width - 2 * x
        items: root.model.tabs
        selected: root.tab
        dark: root.dark
        onPicked: (id) => root.model.tab = id

        Accessible.name: "Разделы настроек"
    }
    SettingsScroll {
        id: scroll

        anchors.top: nav.bottom
        anchors.topMargin: 12
        anchors.bottom: parent.bottom
        width: parent.width
        dark: root.dark

        Column {
            width: parent.width

            Repeater {
                model: Object.keys(root.views)

                Loader {
                    required property string modelData
                    readonly property bool chosen: root.tab === modelData

                    width: parent.width
                    active: false
                    visible: chosen
                    sourceComponent: root.views[modelData]
                    onChosenChanged: active = active || chosen
                    Component.onCompleted: active = chosen
                }
            }
        }
    }
    VHairline {
        anchors.bottom: scroll.top
        width: parent.width
        visible: !scroll.atYBeginning
        dark: root.dark
    }

    Component {
        id: general

        SettingsGeneralView {
            model: root.model.general
            dark: root.dark
        }
    }
    Component {
        id: recording

        SettingsRecordingView {
            model: root.model.recording
            dark: root.dark
        }
    }
    Component {
        id: ai

        SettingsAIView {
            model: root.model.ai
            dark: root.dark
        }
    }
    Component {
        id: permissions

        SettingsPermissionsView {
            permissions: root.model.permissions
            relaunch: root.model.relaunch
            dark: root.dark
        }
    }
    Component {
        id: about

        SettingsAboutView {
            model: root.model.about
            dark: root.dark
        }
    }
}
