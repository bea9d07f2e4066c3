#pragma once

#include "platform/linux/x11_connection.h"

#include <QObject>

namespace velmora {

/// Keeps the program's tool windows out of task bars and pagers, where most desktops would list them: it
/// tells the window manager before each of them is shown. Needs a QGuiApplication, whose windows it follows.
class X11TaskBar final : public QObject {
    Q_OBJECT

public:
    explicit X11TaskBar(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void leaveOut(xcb_window_t window);

    X11Connection m_connection;
};

} // namespace velmora
