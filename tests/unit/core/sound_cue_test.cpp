#include "core/sound_cue.h"
#include "support/fake_desktop.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

class SoundCueTest : public testing::Test {
protected:
    void playBoth() {
        cue.playRecordStart();
        cue.playTranscriptionReady();
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    AppSettings settings{defaults};
    FakeSoundPlayer player;
    SoundCue cue{settings, player};
    const QString tink = QStringLiteral("Tink");
    const QString pop = QStringLiteral("Pop");
};

} // namespace

TEST_F(SoundCueTest, Quiet_WhichIsTheDefault_PlaysAtAThird) {
    playBoth();
    EXPECT_THAT(player.played, ElementsAre(Pair(tink, 0.35F), Pair(pop, 0.35F)));
}

TEST_F(SoundCueTest, System_PlaysAtFullVolume) {
    settings.setReadySound(QStringLiteral("Системный"));
    playBoth();
    EXPECT_THAT(player.played, ElementsAre(Pair(tink, 1.0F), Pair(pop, 1.0F)));
}

TEST_F(SoundCueTest, NoneOrAnyUnknownText_IsSilenceForBoth) {
    for (const char* value : {"Нет", "тихий", "", "loud"}) {
        settings.setReadySound(QString::fromUtf8(value));
        playBoth();
        EXPECT_THAT(player.played, IsEmpty()) << value;
    }
}
