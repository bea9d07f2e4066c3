#pragma once

#include "core/pipeline_coordinator.h"
#include "support/fake_audio.h"
#include "support/fake_backend.h"
#include "support/fake_desktop.h"
#include "support/hand_loop.h"

#include <QTemporaryDir>

#include <cmath>

namespace velmora::test {

/// A dictation pipeline between fakes, and the shortest ways into each of its states.
class DictationOnFakes {
public:
    void record() { pipeline.startRecording(); }
    void transcribe() {
        record();
        loop.advance(std::chrono::seconds(1));
        pipeline.stopAndProcess();
        loop.advance(std::chrono::milliseconds(150));
    }
    void fail() {
        engine.authorizationStatus = MicrophoneAuthorization::Denied;
        pipeline.startRecording();
    }
    /// A buffer of that level, 0.0 to 1.0.
    void speak(double level) {
        const double amplitude = level > 0 ? std::pow(10.0, (level - 1) * 3) : 0;
        engine.speak(std::vector<float>(960, static_cast<float>(amplitude)));
        loop.runPosted();
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    FakeAudioEngine engine;
    FakeAudioCodec codec;
    ProcessFolder recordings{folder.path(), QStringLiteral("recordings")};
    AudioRecorder recorder{loop, defaults, engine, codec, recordings};
    HistoryStore history{folder.filePath(QStringLiteral("Velmora"))};
    FakeDictateService server;
    FakeAccountSession account;
    FakeDesktop desktop;
    TextInjector injector{loop, desktop, desktop};
    FakeSoundPlayer player;
    SoundCue sounds{settings, player};
    FakeWorkspace workspace;
    PipelineCoordinator pipeline{
        {loop, recorder, settings, history, server, account, injector, sounds, workspace}};
};

} // namespace velmora::test
