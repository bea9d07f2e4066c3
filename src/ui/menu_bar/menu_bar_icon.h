#pragma once

#include "core/app_settings.h"
#include "core/pipeline_coordinator.h"
#include "platform/status_item.h"
#include "ui/menu_bar/menu_bar_icon_painter.h"

#include <QObject>

#include <map>

namespace velmora {

/// Keeps the tray's picture true to the pipeline. While nothing moves, or no tray shows it, it has no timer.
class MenuBarIcon : public QObject {
    Q_OBJECT

public:
    MenuBarIcon(PipelineCoordinator& coord, const AppSettings& settings, StatusItem& statusItem,
                MainLoop& loop, QObject* parent = nullptr);

private:
    /// What tells one picture from another. Bars are rounded to units, a quarter of a pixel in the small
    /// picture.
    struct Frame {
        MenuBarIconMode mode = MenuBarIconMode::Idle;
        std::array<int, 7> bars{};
        auto operator<=>(const Frame&) const = default;
    };

    void follow();
    void changeAccent();
    void showFrame();
    [[nodiscard]] BrandBars bars() const;
    const QList<QImage>& picture(const Frame& frame);

    PipelineCoordinator& m_coord;
    const AppSettings& m_settings;
    StatusItem& m_statusItem;
    MainLoop& m_loop;
    MenuBarIconMode m_mode = MenuBarIconMode::Idle;
    std::optional<Frame> m_shown;
    std::map<Frame, QList<QImage>> m_pictures; ///< in the present accent
    std::optional<Timer> m_frameTimer;         ///< while something moves before somebody's eyes
};

} // namespace velmora
