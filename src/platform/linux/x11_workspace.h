#pragma once

#include "platform/linux/desktop_entries.h"
#include "platform/linux/xdg_workspace.h"

#include <memory>

namespace velmora {

class X11Connection;

/// The applications of an X11 session, by their windows and desktop files.
class X11Workspace final : public XdgWorkspace {
public:
    /// An empty display is the session's own; without a server no application is in front.
    explicit X11Workspace(const QByteArray& display = {}, DesktopEntries entries = DesktopEntries());
    ~X11Workspace() override;

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;

private:
    [[nodiscard]] std::optional<DesktopEntry> entryOf(quint32 window, const QString& className,
                                                      const QString& instance);

    std::unique_ptr<X11Connection> m_connection;
    DesktopEntries m_entries;
};

} // namespace velmora
