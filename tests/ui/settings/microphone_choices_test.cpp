#include "ui/settings/microphone_choices.h"

#include <gmock/gmock.h>

using namespace velmora;
using testing::ElementsAre;

namespace {

const AudioInput usb{QStringLiteral("usb"), QStringLiteral("USB")};
const AudioInput headset{QStringLiteral("headset"), QStringLiteral("Гарнитура")};

/// "value|title" of each.
QStringList printed(const QVariantList& options) {
    QStringList lines;
    for (const QVariant& option : options)
        lines.append(option.toMap()[QStringLiteral("value")].toString() + u'|' +
                     option.toMap()[QStringLiteral("title")].toString());
    return lines;
}

const QString standard = QStringLiteral("|Системный по умолчанию");

} // namespace

TEST(MicrophoneChoices, Options_BeginWithTheSystems) {
    MicrophoneChoices choices;
    EXPECT_THAT(printed(choices.options({})), ElementsAre(standard));
    choices.see({usb, headset});
    EXPECT_THAT(printed(choices.options({})),
                ElementsAre(standard, QStringLiteral("usb|USB"), QStringLiteral("headset|Гарнитура")));
    EXPECT_FALSE(choices.isMissing({}));
}

TEST(MicrophoneChoices, ChosenOneIsThere_IsListedOnce) {
    MicrophoneChoices choices;
    choices.see({usb});
    EXPECT_THAT(printed(choices.options(usb.uniqueID)), ElementsAre(standard, QStringLiteral("usb|USB")));
    EXPECT_FALSE(choices.isMissing(usb.uniqueID));
}

TEST(MicrophoneChoices, ChosenOneNeverSeen_IsListedByItsID) {
    MicrophoneChoices choices;
    choices.see({usb});
    EXPECT_THAT(
        printed(choices.options(headset.uniqueID)),
        ElementsAre(standard, QStringLiteral("usb|USB"), QStringLiteral("headset|headset — нет сейчас")));
    EXPECT_TRUE(choices.isMissing(headset.uniqueID));
}

TEST(MicrophoneChoices, ChosenOneUnplugged_KeepsItsName) {
    MicrophoneChoices choices;
    choices.see({usb, headset});
    choices.see({usb});
    EXPECT_THAT(
        printed(choices.options(headset.uniqueID)),
        ElementsAre(standard, QStringLiteral("usb|USB"), QStringLiteral("headset|Гарнитура — нет сейчас")));
    EXPECT_THAT(printed(choices.options(usb.uniqueID)), ElementsAre(standard, QStringLiteral("usb|USB")));
}
