#include "platform/linux/sound_settings.h"

#include <QStandardPaths>

namespace velmora {
namespace {

struct Candidate {
    const char* desktop; // empty for any
    const char* program;
    const char* page; // empty when the program has only this one
};

// The first that fits and is installed is taken.
constexpr Candidate candidates[] = {
    {"GNOME", "gnome-control-center", "sound"},
    {"Unity", "unity-control-center", "sound"},
    {"Budgie", "budgie-control-center", "sound"},
    {"X-Cinnamon", "cinnamon-settings", "sound"},
    {"KDE", "systemsettings", "kcm_pulseaudio"},
    {"KDE", "systemsettings5", "kcm_pulseaudio"},
    {"KDE", "kcmshell6", "kcm_pulseaudio"},
    {"KDE", "kcmshell5", "kcm_pulseaudio"},
    {"MATE", "mate-volume-control", ""},
    {"LXQt", "pavucontrol-qt", ""},
    {"", "pavucontrol", ""},
    {"", "pavucontrol-qt", ""},
    {"XFCE", "xfce4-settings-manager", ""},
};

} // namespace

std::optional<SettingsProgram> findSoundSettings(const QString& currentDesktop) {
    const QStringList desktops = currentDesktop.split(QLatin1Char(':'));
    for (const auto& [desktop, program, page] : candidates) {
        const QLatin1String name(desktop);
        if (!name.isEmpty() && !desktops.contains(name, Qt::CaseInsensitive))
            continue;
        const QString path = QStandardPaths::findExecutable(QLatin1String(program));
        if (path.isEmpty())
            continue;
        const QLatin1String argument(page);
        return SettingsProgram{path, argument.isEmpty() ? QStringList() : QStringList{argument}};
    }
    return std::nullopt;
}

} // namespace velmora
