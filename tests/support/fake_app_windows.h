#pragma once

#include "app/app_windows.h"

#include <QStringList>

namespace velmora::test {

/// Windows that only note what is asked of them.
class FakeAppWindows final : public AppWindows {
public:
    [[nodiscard]] std::unique_ptr<HudPanel> makeHud(PipelineCoordinator&) override {
        ++hudsMade;
        return std::make_unique<Hud>(*this);
    }
    [[nodiscard]] std::unique_ptr<AppWindow> makeMainWindow(PermissionManager&, HotkeyMonitor&) override {
        ++mainWindowsMade;
        auto window = std::make_unique<Window>(*this);
        mainWindow = window.get();
        return window;
    }
    void prewarm(PipelineCoordinator&) override { ++prewarms; }

    int prewarms = 0;
    int hudsMade = 0;
    bool hudIsShown = false;
    QStringList hudSteps; ///< of the capsule on the screen
    int mainWindowsMade = 0;
    AppWindow* mainWindow = nullptr; ///< the last one made
    int mainWindowsOpen = 0;
    int mainWindowFronts = 0;

private:
    class Hud final : public HudPanel {
    public:
        explicit Hud(FakeAppWindows& windows)
            : m_windows(windows) {
            m_windows.hudSteps.clear();
        }
        ~Hud() override { m_windows.hudIsShown = false; }
        Hud(const Hud&) = delete;
        Hud& operator=(const Hud&) = delete;
        void reposition() override { m_windows.hudSteps.append(QStringLiteral("reposition")); }
        void orderFrontRegardless() override {
            m_windows.hudSteps.append(QStringLiteral("front"));
            m_windows.hudIsShown = true;
        }

    private:
        FakeAppWindows& m_windows;
    };

    class Window final : public AppWindow {
    public:
        explicit Window(FakeAppWindows& windows)
            : m_windows(windows) {
            ++m_windows.mainWindowsOpen;
        }
        ~Window() override { --m_windows.mainWindowsOpen; }
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        void makeKeyAndOrderFront() override { ++m_windows.mainWindowFronts; }

    private:
        FakeAppWindows& m_windows;
    };
};

} // namespace velmora::test
