#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace velmora {

struct RunningApplication {
    std::optional<QString> localizedName;
    std::optional<QString> bundleIdentifier; ///< the desktop file's id, without ".desktop"

    bool operator==(const RunningApplication&) const = default;
};

/// The applications around this one.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// The one that has the keyboard focus; none when no window has it or the desktop doesn't tell.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;
    /// Opens the URL in the user's browser (or whatever handles its scheme). False when nothing could be
    /// started.
    virtual bool openURL(const QUrl& url) = 0;
};

} // namespace velmora
