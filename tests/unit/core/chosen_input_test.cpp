#include "core/chosen_input.h"
#include "foundation/user_defaults.h"
#include "support/fake_audio.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

struct ChosenInput : testing::Test {
    void choose(const char* uniqueID) {
        defaults.set(QStringLiteral("micUniqueID"), QString::fromLatin1(uniqueID));
        useChosenInput(engine, defaults);
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    FakeAudioEngine engine;
};

} // namespace

TEST_F(ChosenInput, NeverChosen_IsTheDefault) {
    engine.device = QStringLiteral("left over");
    useChosenInput(engine, defaults);
    EXPECT_EQ(engine.device, std::nullopt);
}

TEST_F(ChosenInput, Chosen_IsUsedUntilTheDefaultIsChosenAgain) {
    choose("usb");
    EXPECT_EQ(engine.device, QStringLiteral("usb"));
    choose("");
    EXPECT_EQ(engine.device, std::nullopt);
}

TEST_F(ChosenInput, ChosenButGone_IsTheDefaultAndNotTheOneBefore) {
    choose("usb");
    EXPECT_NO_THROW(choose("gone"));
    EXPECT_EQ(engine.device, std::nullopt);
}

TEST_F(ChosenInput, ValueOfAnotherType_IsTheDefault) {
    defaults.set(QStringLiteral("micUniqueID"), qint64{7});
    engine.device = QStringLiteral("left over");
    useChosenInput(engine, defaults);
    EXPECT_EQ(engine.device, std::nullopt);
}
