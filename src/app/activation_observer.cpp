#include "app/activation_observer.h"

#include <QGuiApplication>
#include <QWindow>

namespace velmora {

ActivationObserver::ActivationObserver(QObject* parent)
    : QObject(parent) {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &ActivationObserver::focusMoved);
}

void ActivationObserver::focusMoved(const QWindow* window) {
    const bool active = window && window->type() == Qt::Window;
    if (std::exchange(m_isActive, active) != active && active)
        Q_EMIT becameActive();
}

} // namespace velmora
