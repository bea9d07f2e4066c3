#include "platform/linux/x11_workspace.h"

#include "platform/linux/x11_active_window.h"
#include "platform/linux/x11_window_class.h"

#include <QFileInfo>

namespace velmora {

X11Workspace::X11Workspace(const QByteArray& display, DesktopEntries entries)
    : m_connection(std::make_unique<X11Connection>(display))
    , m_entries(std::move(entries)) {}

X11Workspace::~X11Workspace() = default;

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
    X11Connection& x = *m_connection;
    if (!x.isOpen())
        return std::nullopt;
    x.discardEvents();
    const auto found = findWindowClass(x, x11ActiveWindow(x));
    if (!found)
        return std::nullopt;
    if (const auto entry = entryOf(found->window, found->name, found->instance))
        return RunningApplication{entry->name, entry->id};
    return RunningApplication{found->name.isEmpty() ? found->instance : found->name, std::nullopt};
}

std::optional<DesktopEntry> X11Workspace::entryOf(quint32 window, const QString& className,
                                                  const QString& instance) {
    X11Connection& x = *m_connection;
    for (const char* property : {"_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"}) {
        QString id = QFileInfo(QString::fromUtf8(x.property(window, x.atom(property)))).fileName();
        if (id.endsWith(QLatin1String(".desktop")))
            id.chop(8);
        if (auto entry = m_entries.withID(id))
            return entry;
    }
    if (auto entry = m_entries.ofWindow(className, instance))
        return entry;
    const uint32_t process = x.property32(window, x.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    return m_entries.ofExecutable(
        QFileInfo(QFileInfo(QStringLiteral("/proc/%1/exe").arg(process)).symLinkTarget()).fileName());
}

} // namespace velmora
