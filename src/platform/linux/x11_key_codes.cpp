#include "platform/linux/x11_key_codes.h"

#include <algorithm>
#include <array>

namespace velmora::X11KeyCodes {
namespace {

constexpr int outside = 0x1000;
constexpr int lastKey = 255;

struct Key {
    xcb_keycode_t key;
    int virtualCode;
};

// Row by row, as the keys lie.
constexpr std::array keys{
    Key{9, 53}, // Esc, F1 to F12
    Key{67, 122},  Key{68, 120},  Key{69, 99},   Key{70, 118},  Key{71, 96},   Key{72, 97},   Key{73, 98},
    Key{74, 100},  Key{75, 101},  Key{76, 109},  Key{95, 103},  Key{96, 111},

    Key{191, 105}, // F13 to F20
    Key{192, 107}, Key{193, 113}, Key{194, 106}, Key{195, 64},  Key{196, 79},  Key{197, 80},  Key{198, 90},
    Key{107, 105}, // Print, Scroll Lock and Pause lie where others have F13 to F15
    Key{78, 107},  Key{127, 113},

    Key{49, 50}, // ` to Backspace
    Key{10, 18},   Key{11, 19},   Key{12, 20},   Key{13, 21},   Key{14, 23},   Key{15, 22},   Key{16, 26},
    Key{17, 28},   Key{18, 25},   Key{19, 29},   Key{20, 27},   Key{21, 24},   Key{22, 51},

    Key{23, 48}, // Tab to ]
    Key{24, 12},   Key{25, 13},   Key{26, 14},   Key{27, 15},   Key{28, 17},   Key{29, 16},   Key{30, 32},
    Key{31, 34},   Key{32, 31},   Key{33, 35},   Key{34, 33},   Key{35, 30},

    Key{66, 57}, // Caps Lock to Return
    Key{38, 0},    Key{39, 1},    Key{40, 2},    Key{41, 3},    Key{42, 5},    Key{43, 4},    Key{44, 38},
    Key{45, 40},   Key{46, 37},   Key{47, 41},   Key{48, 39},   Key{51, 42},   Key{36, 36},

    Key{50, 56}, // Shift to Shift
    Key{94, 10}, // between Shift and Z, where there is one
    Key{52, 6},    Key{53, 7},    Key{54, 8},    Key{55, 9},    Key{56, 11},   Key{57, 45},   Key{58, 46},
    Key{59, 43},   Key{60, 47},   Key{61, 44},   Key{62, 60},

    Key{37, 59}, // Control to Control
    Key{133, 55},  Key{64, 58},   Key{65, 49},   Key{108, 61},  Key{134, 54},  Key{135, 110}, // Menu
    Key{105, 62},

    Key{118, 114}, // Insert to Page Down, arrows
    Key{110, 115}, Key{112, 116}, Key{119, 117}, Key{115, 119}, Key{117, 121}, Key{113, 123}, Key{114, 124},
    Key{116, 125}, Key{111, 126},

    Key{77, 71}, // the keypad
    Key{106, 75},  Key{63, 67},   Key{82, 78},   Key{86, 69},   Key{104, 76},  Key{125, 81},  Key{91, 65},
    Key{90, 82},   Key{87, 83},   Key{88, 84},   Key{89, 85},   Key{83, 86},   Key{84, 87},   Key{85, 88},
    Key{79, 89},   Key{80, 91},   Key{81, 92},

    Key{121, 74}, // mute, quieter, louder
    Key{122, 73},  Key{123, 72},

    Key{132, 93}, // ¥, _, keypad comma, eisū and kana of a Japanese keyboard
    Key{97, 94},   Key{129, 95},  Key{102, 102}, Key{100, 104},
};

} // namespace

int toVirtual(xcb_keycode_t key) {
    const auto* const known = std::ranges::find(keys, key, &Key::key);
    return known != keys.end() ? known->virtualCode : outside + key;
}

std::vector<xcb_keycode_t> fromVirtual(int keyCode) {
    std::vector<xcb_keycode_t> found;
    for (const Key& each : keys) {
        if (each.virtualCode == keyCode)
            found.push_back(each.key);
    }
    const int own = keyCode - outside;
    if (own > 0 && own <= lastKey && toVirtual(static_cast<xcb_keycode_t>(own)) == keyCode)
        found.push_back(static_cast<xcb_keycode_t>(own));
    return found;
}

std::optional<xcb_keycode_t> ofStandIn(FnStandIn standIn) {
    switch (standIn) {
    case FnStandIn::None:
        break;
    case FnStandIn::RightControl:
        return 105;
    case FnStandIn::RightOption:
        return 108;
    case FnStandIn::RightCommand:
        return 134;
    case FnStandIn::Menu:
        return 135;
    case FnStandIn::ScrollLock:
        return 78;
    case FnStandIn::Pause:
        return 127;
    }
    return std::nullopt;
}

} // namespace velmora::X11KeyCodes
