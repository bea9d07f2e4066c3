#pragma once

#include "platform/compositing.h"

#include <QByteArray>

#include <memory>

class QSocketNotifier;

namespace velmora {

class X11Connection;

/// Whether a compositing manager runs on the X server. Without a server there is none.
class X11Compositing final : public Compositing {
    Q_OBJECT

public:
    /// An empty display is the session's own.
    explicit X11Compositing(const QByteArray& display = {}, QObject* parent = nullptr);
    ~X11Compositing() override;

    [[nodiscard]] bool isActive() const override { return m_active; }

private:
    void watchManager();
    void readEvents();
    void update();

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    bool m_active = false;
};

} // namespace velmora
