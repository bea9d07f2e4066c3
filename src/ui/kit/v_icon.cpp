#include "ui/kit/v_icon.h"

#include <array>

namespace velmora {

QLatin1String vIconName(VIcon icon) {
    static constexpr std::array<QLatin1String, vIconCount> names{
        QLatin1String("mic"),           QLatin1String("micFill"),  QLatin1String("video"),
        QLatin1String("gear"),          QLatin1String("history"),  QLatin1String("sparkle"),
        QLatin1String("lock"),          QLatin1String("info"),     QLatin1String("waveform"),
        QLatin1String("check"),         QLatin1String("xMark"),    QLatin1String("eye"),
        QLatin1String("eyeSlash"),      QLatin1String("copy"),     QLatin1String("trash"),
        QLatin1String("search"),        QLatin1String("chevDown"), QLatin1String("chevRight"),
        QLatin1String("chevUpDown"),    QLatin1String("arrow"),    QLatin1String("paste"),
        QLatin1String("globe"),         QLatin1String("bolt"),     QLatin1String("speaker"),
        QLatin1String("accessibility"), QLatin1String("inputMon"), QLatin1String("command"),
        QLatin1String("plus"),          QLatin1String("link"),     QLatin1String("calendar"),
        QLatin1String("person"),        QLatin1String("folder"),
    };
    return names[static_cast<std::size_t>(icon)];
}

} // namespace velmora
