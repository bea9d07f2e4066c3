#include "ui/kit/v_on_screen.h"

#include <QEvent>
#include <QQuickWindow>

namespace velmora {

bool VOnScreen::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose || event->type() == QEvent::Hide)
        look();
    return QQuickItem::eventFilter(watched, event);
}

void VOnScreen::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange)
        follow(data.window);
    else if (change == ItemVisibleHasChanged)
        look();
}

void VOnScreen::follow(QQuickWindow* window) {
    if (m_window)
        m_window->removeEventFilter(this);
    disconnect(m_frame);
    setShown(false);
    m_window = window;
    if (window)
        window->installEventFilter(this);
    look();
}

void VOnScreen::look() {
    disconnect(m_frame);
    if (!m_window || !m_window->isExposed() || !isVisible()) {
        setShown(false);
    } else if (!m_shown) {
        m_frame = connect(m_window, &QQuickWindow::frameSwapped, this, [this] {
            disconnect(m_frame);
            setShown(true);
        });
        m_window->update();
    }
}

void VOnScreen::setShown(bool shown) {
    if (shown == m_shown)
        return;
    m_shown = shown;
    Q_EMIT shownChanged();
}

} // namespace velmora
