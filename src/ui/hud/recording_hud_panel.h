#pragma once

#include "foundation/user_defaults.h"
#include "platform/compositing.h"
#include "platform/screens.h"
#include "ui/hud/recording_hud_model.h"
#include "ui/kit/ui_engine.h"

#include <QQuickView>

namespace velmora {

/// The window of the capsule: above all others and on every desktop, without ever taking the focus or a
/// click.
class RecordingHUDPanel : public QQuickView {
    Q_OBJECT

public:
    RecordingHUDPanel(UiEngine& engine, const PipelineCoordinator& coord, const AppSettings& settings,
                      const UserDefaults& defaults, Screens& screens, const Compositing& compositing);

    /// Makes the first panel as quick as the later ones: what is loaded for a capsule stays loaded as long as
    /// the engine.
    static void prewarm(UiEngine& engine, const PipelineCoordinator& coord, const AppSettings& settings,
                        const UserDefaults& defaults, Screens& screens, const Compositing& compositing);

    /// Lays the panel where the stored settings want it; without a screen it stays where it is.
    void reposition();
    /// Shows the panel above all other windows, which keep the focus.
    void orderFrontRegardless();
    void orderOut();

private Q_SLOTS:
    void updateMask();

private:
    const UserDefaults& m_defaults;
    Screens& m_screens;
    const Compositing& m_compositing;
    RecordingHUDModel* m_model; ///< a child, for the view that needs it is gone before the children are
};

} // namespace velmora
