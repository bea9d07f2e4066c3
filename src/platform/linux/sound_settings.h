#pragma once

#include <QStringList>

#include <optional>

namespace velmora {

/// A program and what to start it with.
struct SettingsProgram {
    QString program;
    QStringList arguments;

    bool operator==(const SettingsProgram&) const = default;
};

/// What shows the sound devices on this desktop, the names of which stand between colons as in
/// $XDG_CURRENT_DESKTOP. None when nothing of the kind is installed.
[[nodiscard]] std::optional<SettingsProgram> findSoundSettings(const QString& currentDesktop);

} // namespace velmora
