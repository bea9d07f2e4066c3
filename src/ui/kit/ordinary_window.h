#pragma once

#include "foundation/main_loop.h"
#include "ui/kit/window_place.h"

#include <QQuickView>

#include <optional>

namespace velmora {

class UiEngine;

/// A window with a title bar, opened in the middle of the screen and moved by its background as well. It
/// looks at what nobody announces only while it is open and seen; delete it when it is closed, and its memory
/// comes back.
class OrdinaryWindow : public QQuickView {
    Q_OBJECT

public:
    ~OrdinaryWindow() override;

    /// Shows the window, in front and with the keyboard, wherever it was.
    void open();

Q_SIGNALS:
    /// The user or the desktop has closed it. The end of the program doesn't count.
    void closed();

protected:
    OrdinaryWindow(UiEngine& engine, MainLoop& loop, const WindowSizes& sizes);

    /// Fills the window. The view looks at the model to its end: delete rootObject() before the model goes.
    void setView(const QUrl& view, QObject& model);
    /// Reads again what nobody announces.
    virtual void refresh() = 0;

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void followPointer(const QMouseEvent& event);
    void centreOnScreen();
    void followColours();

    MainLoop& m_loop;
    const WindowSizes m_sizes;
    Timer m_refreshTimer;
    std::optional<QPointF> m_backgroundPress; // where nothing else took it
    bool m_programEnds = false;
};

} // namespace velmora
