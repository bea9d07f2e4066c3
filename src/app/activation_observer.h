#pragma once

#include <QObject>

class QWindow;

namespace velmora {

/// Tells when the user comes to one of the program's ordinary windows from elsewhere. The popup doesn't
/// count: it comes to the user.
class ActivationObserver : public QObject {
    Q_OBJECT

public:
    explicit ActivationObserver(QObject* parent = nullptr);

Q_SIGNALS:
    void becameActive();

private:
    void focusMoved(const QWindow* window);

    bool m_isActive = false;
};

} // namespace velmora
