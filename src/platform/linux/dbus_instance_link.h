#pragma once

#include "platform/instance_link.h"

#include <QDBusConnection>

namespace velmora {

/// One instance a D-Bus session, under the name and the interface by which desktops activate applications, so
/// that a browser's link and a key binding need nothing of ours.
class DbusInstanceLink final : public InstanceLink {
public:
    DbusInstanceLink();
    ~DbusInstanceLink() override;

    /// Whether the session has a bus.
    [[nodiscard]] static bool isAvailable();

    [[nodiscard]] bool claim(Handler handler) override;
    [[nodiscard]] bool send(const InstanceCommand& command) override;

private:
    class Exported;

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    std::unique_ptr<Exported> m_exported;
};

} // namespace velmora
