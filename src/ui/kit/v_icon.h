#pragma once

#include <QLatin1String>

namespace velmora {

/// The icons of the design; each is a line drawing of its own name in icons/.
enum class VIcon {
    mic,
    micFill,
    video,
    gear,
    history,
    sparkle,
    lock,
    info,
    waveform,
    check,
    xMark,
    eye,
    eyeSlash,
    copy,
    trash,
    search,
    chevDown,
    chevRight,
    chevUpDown,
    arrow,
    paste,
    globe,
    bolt,
    speaker,
    accessibility,
    inputMon,
    command,
    plus,
    link,
    calendar,
    person,
    folder,
};

inline constexpr int vIconCount = static_cast<int>(VIcon::folder) + 1;

/// The case's name, which is also that of its file.
[[nodiscard]] QLatin1String vIconName(VIcon icon);

} // namespace velmora
