#pragma once

#include "platform/compositing.h"
#include "platform/linux/x11_manager_watch.h"

namespace velmora {

/// Whether a compositing manager runs on the X server. Without a server there is none.
class X11Compositing final : public Compositing {
    Q_OBJECT

public:
    /// An empty display is the session's own.
    explicit X11Compositing(const QByteArray& display = {}, QObject* parent = nullptr);

    [[nodiscard]] bool isActive() const override { return m_active; }

private:
    void follow();

    X11ManagerWatch m_manager;
    bool m_active;
};

} // namespace velmora
