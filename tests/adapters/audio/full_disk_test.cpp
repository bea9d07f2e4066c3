// Dictations on a disk that has no room for them, with the real files.

#include "platform/linux/ffmpeg_audio_codec.h"
#include "support/desktop/tone.h"
#include "support/dictation_on_fakes.h"
#include "support/file_size_limit.h"

#include <QDir>
#include <QStorageInfo>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

class FullDiskTest : public testing::Test, protected DictationOnFakes {
protected:
    void dictate(double seconds) {
        m_pipeline.startRecording();
        engine.speak(makeTone(1000, 0.5, seconds, engine.format));
        loop.advance(std::chrono::milliseconds(int(seconds * 1000)));
        m_pipeline.stopAndProcess();
        loop.advance(150ms);
    }
    void answer(const QString& text) {
        server.done(text);
        server.finish();
        loop.runPosted();
    }
    [[nodiscard]] QString shownError() const {
        const auto* error = std::get_if<pipeline_state::Error>(&m_pipeline.state());
        return error ? error->message : QString();
    }
    [[nodiscard]] bool isIdle() const {
        return std::holds_alternative<pipeline_state::Idle>(m_pipeline.state());
    }

    FfmpegAudioCodec m_codec;
    AudioRecorder m_recorder{loop, defaults, engine, m_codec, recordings};
    PipelineCoordinator m_pipeline{
        {loop, m_recorder, settings, history, server, account, injector, sounds, workspace}};
};

} // namespace

TEST_F(FullDiskTest, NoRoomAtAll_TheUserIsToldWhichDiskIsFull_AndNothingIsSent) {
    ASSERT_TRUE(QFile::link(u"/dev/full"_s, recordings.path() + u"/velmora-1767225600.m4a"_s));
    dictate(3);
    EXPECT_EQ(shownError(),
              u"Запись не сохранена: нет места на диске "_s + QStorageInfo(folder.path()).rootPath());
    EXPECT_TRUE(server.requests.isEmpty());
    EXPECT_TRUE(QDir(recordings.path()).isEmpty(QDir::Files | QDir::System | QDir::Hidden));
    loop.advance(6s);
    EXPECT_TRUE(isIdle());
}

TEST_F(FullDiskTest, RoomForTheBeginning_ThatIsDictated_AndTheUserIsToldOfTheRest) {
    {
        const FileSizeLimit full(20'000);
        dictate(10);
    }
    ASSERT_EQ(server.requests.size(), 1);
    EXPECT_GT(QFileInfo(server.requests.front()).size(), 10'000);
    answer(u"Начало."_s);
    EXPECT_EQ(desktop.pasted, QStringList{u"Начало."_s});
    EXPECT_EQ(history.items().size(), 1U);
    EXPECT_TRUE(shownError().startsWith(u"Записано не всё: "_s)) << qPrintable(shownError());
}

TEST_F(FullDiskTest, RoomAgain_NothingIsSaidOfTheFormerLoss) {
    {
        const FileSizeLimit full(20'000);
        dictate(10);
    }
    answer(u"Начало."_s);
    loop.advance(6s);
    dictate(3);
    answer(u"Всё."_s);
    EXPECT_TRUE(isIdle());
}
