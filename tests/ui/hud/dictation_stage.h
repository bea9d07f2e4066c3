#pragma once

#include "core/pipeline_coordinator.h"
#include "support/fake_audio.h"
#include "support/fake_backend.h"
#include "support/fake_desktop.h"
#include "support/hand_loop.h"
#include "support/ui/view_host.h"

#include <cmath>

namespace velmora::test {

/// A view host beside everything that a dictation needs, with a microphone in the test's hand.
class DictationStage {
public:
    /// The recorder hears one buffer of this level (0 to 1).
    void speak(float level) {
        constexpr std::size_t samples = 96;
        const float amplitude = level <= 0 ? 0 : std::pow(10.0F, (level * 60 - 60) / 20);
        engine.speak(std::vector<float>(samples, amplitude));
        loop.runPosted();
    }
    void speak(std::initializer_list<float> levels) {
        for (const float level : levels)
            speak(level);
    }

    ViewHost host;
    HandLoop loop;
    FakeAudioEngine engine;
    FakeAudioCodec codec;
    AudioRecorder recorder{loop, host.defaults, engine, codec, host.folder.path()};
    HistoryStore history{host.folder.filePath(QStringLiteral("Velmora"))};
    FakeDictateService server;
    FakeAccountSession account;
    FakeDesktop desktop;
    TextInjector injector{loop, desktop, desktop};
    FakeSoundPlayer player;
    SoundCue sounds{host.settings, player};
    FakeWorkspace workspace;
    PipelineCoordinator pipeline{
        {loop, recorder, host.settings, history, server, account, injector, sounds, workspace}};
};

} // namespace velmora::test
