#pragma once

#include <QByteArray>
#include <QObject>

#include <memory>

namespace velmora {

class X11Connection;

/// Whether somebody owns a manager selection, such as "_NET_SYSTEM_TRAY_S0": the sign by which trays and
/// compositors make themselves known. Without an X server nobody does.
class X11ManagerWatch final : public QObject {
    Q_OBJECT

public:
    /// An empty display is the session's own.
    explicit X11ManagerWatch(QByteArray selection, const QByteArray& display = {}, QObject* parent = nullptr);
    ~X11ManagerWatch() override;

    [[nodiscard]] bool isThere() const { return m_owner != 0; }

Q_SIGNALS:
    /// Somebody came, went, or took another's place.
    void changed();

private:
    void watch();
    void update();

    const QByteArray m_selection;
    std::unique_ptr<X11Connection> m_connection;
    quint32 m_owner = 0;
};

} // namespace velmora
