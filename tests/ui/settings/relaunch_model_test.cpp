#include "core/relauncher.h"
#include "foundation/error.h"
#include "support/hand_loop.h"
#include "ui/settings/relaunch_model.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class RelaunchModelTest : public testing::Test {
protected:
    HandLoop loop;
    bool canStart = true;
    int starts = 0;
    bool ended = false;
    Relauncher relauncher{{.loop = loop,
                           .executable = QStringLiteral("/usr/bin/velmora"),
                           .processId = 1,
                           .start =
                               [this](const QString&, const QStringList&) {
                                   if (!canStart)
                                       throw PlainError(QStringLiteral("no shell"));
                                   ++starts;
                               },
                           .dismissModalUIThen = [](const std::function<void()>& then) { then(); },
                           .terminate = [this] { ended = true; }}};
    RelaunchModel model{relauncher};
};

} // namespace

TEST_F(RelaunchModelTest, Pressed_SaysSoUntilTheProgramEnds) {
    EXPECT_EQ(model.label(), QStringLiteral("Перезапустить"));
    model.relaunch();
    model.relaunch();
    EXPECT_TRUE(model.relaunching());
    EXPECT_EQ(model.label(), QStringLiteral("Перезапускаем…"));
    EXPECT_EQ(starts, 1);
    loop.runPosted();
    EXPECT_TRUE(ended);
}

TEST_F(RelaunchModelTest, HelperNotStarted_TheButtonComesBack) {
    canStart = false;
    const QSignalSpy changes(&model, &RelaunchModel::relaunchingChanged);
    model.relaunch();
    EXPECT_FALSE(model.relaunching());
    EXPECT_EQ(model.label(), QStringLiteral("Перезапустить"));
    EXPECT_EQ(changes.size(), 2);
    EXPECT_FALSE(ended);
    canStart = true;
    model.relaunch();
    EXPECT_TRUE(model.relaunching());
    EXPECT_EQ(starts, 1);
}
