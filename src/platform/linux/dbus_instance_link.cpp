#include "platform/linux/dbus_instance_link.h"

#include "platform/linux/instance_action.h"

#include <QDBusMessage>

namespace velmora {
namespace {

const QString service = QStringLiteral("app.velmora.Velmora");
const QString objectPath = QStringLiteral("/app/velmora/Velmora");
const QString interface = QStringLiteral("org.freedesktop.Application");
constexpr int replyTimeoutMs = 5000;

} // namespace

/// The object on the bus.
class DbusInstanceLink::Exported : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit Exported(Handler handler)
        : m_handler(std::move(handler)) {}

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap&) { m_handler(instance_command::Activate{}); }
    Q_SCRIPTABLE void Open(const QStringList& urls, const QVariantMap&) {
        for (const QString& url : urls)
            m_handler(instance_command::OpenURL{url});
    }
    Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList&, const QVariantMap&) {
        if (const std::optional<InstanceCommand> command = commandOfAction(action))
            m_handler(*command);
    }

private:
    Handler m_handler;
};

DbusInstanceLink::DbusInstanceLink() = default;
DbusInstanceLink::~DbusInstanceLink() {
    if (!m_exported)
        return;
    m_bus.unregisterService(service);
    m_bus.unregisterObject(objectPath);
}

bool DbusInstanceLink::isAvailable() {
    return QDBusConnection::sessionBus().isConnected();
}

bool DbusInstanceLink::claim(Handler handler) {
    // The object is there before the name is, so that nobody who sees the name calls in vain.
    m_exported = std::make_unique<Exported>(std::move(handler));
    if (m_bus.registerObject(objectPath, m_exported.get(), QDBusConnection::ExportScriptableSlots) &&
        m_bus.registerService(service)) // doesn't queue and can't be replaced
        return true;
    m_bus.unregisterObject(objectPath);
    m_exported.reset();
    return false;
}

bool DbusInstanceLink::send(const InstanceCommand& command) {
    const QVariantMap platformData;
    QDBusMessage call;
    if (const auto* open = std::get_if<instance_command::OpenURL>(&command)) {
        call = QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("Open"));
        call << QStringList{open->url} << platformData;
    } else if (const QString action = actionOf(command); !action.isEmpty()) {
        call =
            QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("ActivateAction"));
        call << action << QVariantList() << platformData;
    } else {
        call = QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("Activate"));
        call << platformData;
    }
    call.setAutoStartService(false); // a verb is for the instance that runs, it doesn't start one
    return m_bus.call(call, QDBus::Block, replyTimeoutMs).type() == QDBusMessage::ReplyMessage;
}

} // namespace velmora

#include "dbus_instance_link.moc"
