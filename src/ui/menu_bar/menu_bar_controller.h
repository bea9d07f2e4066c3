#pragma once

#include "core/hotkey_monitor.h"
#include "core/permission_manager.h"
#include "platform/click_watch.h"
#include "platform/compositing.h"
#include "platform/screens.h"
#include "ui/kit/ui_engine.h"
#include "ui/menu_bar/menu_bar_icon.h"
#include "ui/menu_bar/menu_bar_popup_panel.h"
#include "ui/menu_bar/popover_row.h"

class QQmlComponent;

namespace velmora {

class MenuBarPopoverModel;

/// The program's icon in the tray and the popup that opens from it.
class MenuBarController : public QObject {
    Q_OBJECT

public:
    using Callback = std::function<void()>;

    struct Neighbours {
        PipelineCoordinator& coord;
        HotkeyMonitor& hotkey;
        PermissionManager& perms;
        const AppSettings& settings;
        StatusItem& statusItem;
        Screens& screens;
        const Compositing& compositing;
        ClickWatch& clicks;
        UiEngine& engine;
        MainLoop& loop;
    };

    explicit MenuBarController(const Neighbours& neighbours, QObject* parent = nullptr);
    ~MenuBarController() override;

    Callback onShowSettings;
    Callback onShowHistory;
    Callback onShowMeetings;
    Callback onShowAbout;
    Callback onShowOnboarding;
    Callback onShowPermissions;
    Callback onTestRecord;
    Callback onQuit;

    /// Opens the popup, or closes it.
    void handleClick();
    /// Does nothing while no tray shows the icon.
    void openPopup();
    void closePopup();
    /// The open popup, or none.
    [[nodiscard]] MenuBarPopupPanel* popupPanel() const { return m_popupPanel.get(); }

    /// Makes ready what the first opening would take its time for.
    void prewarm();

private:
    [[nodiscard]] std::unique_ptr<QQuickItem> makeView(MenuBarPopoverModel& popover, bool seeThrough);
    [[nodiscard]] std::unique_ptr<MenuBarPopoverModel> takeSnapshot() const;
    void connectPopup(const MenuBarPopoverModel& popover);
    void pressed(const QPoint& at);
    [[nodiscard]] const Callback& callbackOf(PopoverAction action) const;

    HotkeyMonitor& m_hotkey;
    PermissionManager& m_perms;
    const AppSettings& m_settings;
    StatusItem& m_statusItem;
    Screens& m_screens;
    const Compositing& m_compositing;
    ClickWatch& m_clicks; ///< on while a popup is open
    UiEngine& m_engine;
    MainLoop& m_loop;
    MenuBarIcon m_icon;
    std::unique_ptr<QQmlComponent> m_view; ///< compiled once, before the first popup
    std::unique_ptr<MenuBarPopupPanel> m_popupPanel;
    std::optional<MainLoop::TimePoint> m_leftAt; ///< when a popup was left by what may be a click on the icon
};

} // namespace velmora
