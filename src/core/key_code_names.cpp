#include "core/key_code_names.h"

#include <array>

namespace velmora::KeyCodeNames {
namespace {

struct Name {
    int keyCode;
    const char16_t* text;
};

constexpr std::array names{
    Name{0, u"A"},
    Name{1, u"S"},
    Name{2, u"D"},
    Name{3, u"F"},
    Name{4, u"H"},
    Name{5, u"G"},
    Name{6, u"Z"},
    Name{7, u"X"},
    Name{8, u"C"},
    Name{9, u"V"},
    Name{11, u"B"},
    Name{12, u"Q"},
    Name{13, u"W"},
    Name{14, u"E"},
    Name{15, u"R"},
    Name{16, u"Y"},
    Name{17, u"T"},
    Name{18, u"1"},
    Name{19, u"2"},
    Name{20, u"3"},
    Name{21, u"4"},
    Name{22, u"6"},
    Name{23, u"5"},
    Name{24, u"="},
    Name{25, u"9"},
    Name{26, u"7"},
    Name{27, u"-"},
    Name{28, u"8"},
    Name{29, u"0"},
    Name{30, u"]"},
    Name{31, u"O"},
    Name{32, u"U"},
    Name{33, u"["},
    Name{34, u"I"},
    Name{35, u"P"},
    Name{36, u"Return"},
    Name{37, u"L"},
    Name{38, u"J"},
    Name{39, u"'"},
    Name{40, u"K"},
    Name{41, u";"},
    Name{42, u"\\"},
    Name{43, u","},
    Name{44, u"/"},
    Name{45, u"N"},
    Name{46, u"M"},
    Name{47, u"."},
    Name{48, u"Tab"},
    Name{49, u"Space"},
    Name{50, u"`"},
    Name{51, u"Delete"},
    Name{53, u"Esc"},
    Name{65, u"Num ."},
    Name{67, u"Num *"},
    Name{69, u"Num +"},
    Name{71, u"Clear"},
    Name{75, u"Num /"},
    Name{76, u"Enter"},
    Name{78, u"Num -"},
    Name{81, u"Num ="},
    Name{82, u"Num 0"},
    Name{83, u"Num 1"},
    Name{84, u"Num 2"},
    Name{85, u"Num 3"},
    Name{86, u"Num 4"},
    Name{87, u"Num 5"},
    Name{88, u"Num 6"},
    Name{89, u"Num 7"},
    Name{91, u"Num 8"},
    Name{92, u"Num 9"},
    Name{115, u"Home"},
    Name{116, u"Page Up"},
    Name{117, u"Fwd Delete"},
    Name{119, u"End"},
    Name{121, u"Page Down"},
    Name{123, u"←"},
    Name{124, u"→"},
    Name{125, u"↓"},
    Name{126, u"↑"},
};

/// F1 first.
constexpr std::array functionKeys{122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                  103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

static_assert(names.size() + functionKeys.size() == 99);

} // namespace

QString label(int keyCode) {
    const auto* const function = std::ranges::find(functionKeys, keyCode);
    if (function != functionKeys.end())
        return QStringLiteral("F%1").arg(function - functionKeys.begin() + 1);
    const auto* const name = std::ranges::find(names, keyCode, &Name::keyCode);
    return name != names.end() ? QString::fromUtf16(name->text) : QStringLiteral("key %1").arg(keyCode);
}

bool isFunctionKey(int keyCode) {
    return std::ranges::find(functionKeys, keyCode) != functionKeys.end();
}

} // namespace velmora::KeyCodeNames
