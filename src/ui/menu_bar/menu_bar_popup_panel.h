#pragma once

#include <QQuickItem>
#include <QQuickWindow>

namespace velmora {

/// The window of the tray icon's popup. It closes, as menus do, when the focus goes elsewhere.
class MenuBarPopupPanel : public QQuickWindow {
    Q_OBJECT

public:
    /// `popup` is where the view goes and `window` what the panel takes for it, both on the screen. A panel
    /// that isn't see-through is cut to the view's corners.
    MenuBarPopupPanel(std::unique_ptr<QQuickItem> view, const QRect& popup, const QRect& window,
                      bool seeThrough);

    [[nodiscard]] QQuickItem& view() const { return *m_view; }

    /// Shows it and asks for the keyboard.
    void open();

Q_SIGNALS:
    /// A click beside the popup, or another window has the keyboard now.
    void left();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void cutCorners();

    std::unique_ptr<QQuickItem> m_view;
    bool m_wasActive = false;
};

} // namespace velmora
