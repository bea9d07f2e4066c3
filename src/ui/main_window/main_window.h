#pragma once

#include "ui/main_window/main_window_model.h"

#include <QQuickView>

namespace velmora {

class UiEngine;

/// The window with the history, the meetings and the settings. It looks at the permissions and at the clock
/// only while it is open; delete it when it is closed, and its memory comes back.
class MainWindow : public QQuickView {
    Q_OBJECT

public:
    struct Neighbours {
        UiEngine& engine;
        MainLoop& loop;
        MainWindowModel::Neighbours model;
    };

    explicit MainWindow(const Neighbours& neighbours);
    ~MainWindow() override;

    /// Shows the window, in front and with the keyboard, wherever it was.
    void open();

Q_SIGNALS:
    /// The user or the desktop has closed it.
    void closed();

protected:
    bool event(QEvent* event) override;

private:
    void followPointer(const QMouseEvent& event);
    void centreOnScreen();
    void followColours();

    MainLoop& m_loop;
    MainWindowModel m_model;
    Timer m_permsTimer;
    std::optional<QPointF> m_backgroundPress; // where nothing else took it
};

} // namespace velmora
