#include "core/key_code_names.h"

#include <QMap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace velmora;

namespace {

/// The keys that have names, by their codes: runs of neighbours, and the function keys.
QMap<int, QString> namedKeys() {
    const QList<std::pair<int, QString>> runs{
        {0, u"A S D F H G Z X C V"_s},
        {11, u"B Q W E R Y T"_s},
        {18, u"1 2 3 4 6 5"_s},
        {24, u"= 9 7 - 8 0"_s},
        {30, u"] O U [ I P"_s},
        {36, u"Return L J"_s},
        {39, u"' K ; \\ , /"_s},
        {45, u"N M ."_s},
        {48, u"Tab Space ` Delete"_s},
        {53, u"Esc"_s},
        {65, u"Num_."_s},
        {67, u"Num_*"_s},
        {69, u"Num_+"_s},
        {71, u"Clear"_s},
        {75, u"Num_/ Enter"_s},
        {78, u"Num_-"_s},
        {81, u"Num_= Num_0 Num_1 Num_2 Num_3 Num_4 Num_5 Num_6 Num_7"_s},
        {91, u"Num_8 Num_9"_s},
        {115, u"Home Page_Up Fwd_Delete"_s},
        {119, u"End"_s},
        {121, u"Page_Down"_s},
        {123, u"← → ↓ ↑"_s},
    };
    constexpr int functionKeys[] = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                    103, 111, 105, 107, 113, 106, 64, 79,  80,  90};
    QMap<int, QString> keys;
    for (const auto& [first, names] : runs) {
        int code = first;
        for (QString name : names.split(u' '))
            keys.insert(code++, name.replace(u'_', u' '));
    }
    for (int number = 1; const int code : functionKeys)
        keys.insert(code, u"F%1"_s.arg(number++));
    return keys;
}

} // namespace

TEST(KeyCodeNames, Label_EveryCode_IsTheKeysNameOrItsNumber) {
    const QMap<int, QString> named = namedKeys();
    ASSERT_EQ(named.size(), 99);
    for (int code = -1; code < 0x200; ++code)
        EXPECT_EQ(KeyCodeNames::label(code), named.value(code, u"key %1"_s.arg(code))) << code;
}

TEST(KeyCodeNames, IsFunctionKey_F1ToF20AndNoOther) {
    const QMap<int, QString> named = namedKeys();
    for (int code = -1; code < 0x200; ++code) {
        const QString name = named.value(code);
        EXPECT_EQ(KeyCodeNames::isFunctionKey(code),
                  name.size() > 1 && name.startsWith(u'F') && name[1].isDigit())
            << code;
    }
}
