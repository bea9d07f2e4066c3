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
        return mainWindow.make();
    }
    [[nodiscard]] std::unique_ptr<AppWindow>
    makeOnboardingWindow(PermissionManager&, PipelineCoordinator&,
                         std::function<void()> startTestRecording) override {
        recordFromOnboarding = std::move(startTestRecording);
        return onboarding.make();
    }
    void prewarm(PipelineCoordinator&) override { ++prewarms; }

    int prewarms = 0;
    int hudsMade = 0;
    bool hudIsShown = false;
    QStringList hudSteps; ///< of the capsule on the screen

    /// The windows of one kind.
    class Kind {
    public:
        [[nodiscard]] std::unique_ptr<AppWindow> make() {
            ++made;
            auto window = std::make_unique<Window>(*this);
            last = window.get();
            return window;
        }
        /// The user closes the last one made.
        void close() const { last->windowWillClose(); }

        int made = 0;
        int open = 0;
        int fronts = 0;
        std::function<void()> cameToFront = [] {};

    private:
        class Window final : public AppWindow {
        public:
            explicit Window(Kind& kind)
                : m_kind(kind) {
                ++m_kind.open;
            }
            ~Window() override { --m_kind.open; }
            Window(const Window&) = delete;
            Window& operator=(const Window&) = delete;
            void makeKeyAndOrderFront() override {
                ++m_kind.fronts;
                m_kind.cameToFront();
            }

        private:
            Kind& m_kind;
        };

        AppWindow* last = nullptr;
    };
    Kind mainWindow;
    Kind onboarding;
    std::function<void()> recordFromOnboarding; ///< as the tutorial's button does

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
};

} // namespace velmora::test
