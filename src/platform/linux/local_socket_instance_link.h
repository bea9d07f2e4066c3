#pragma once

#include "platform/instance_link.h"

#include <QLocalServer>
#include <QLockFile>

namespace velmora {

/// One instance a user, for sessions without a D-Bus. A line of text is one command.
class LocalSocketInstanceLink final : public InstanceLink {
public:
    /// `path` of the socket; that of the user's runtime folder by default.
    explicit LocalSocketInstanceLink(QString path = defaultPath());

    [[nodiscard]] bool claim(Handler handler) override;
    [[nodiscard]] bool send(const InstanceCommand& command) override;

private:
    [[nodiscard]] static QString defaultPath();
    void serve(QLocalSocket* connection);

    const QString m_path;
    QLockFile m_lock; // a server would take the socket over from one that is listening
    QLocalServer m_server;
    Handler m_handler;
};

} // namespace velmora
