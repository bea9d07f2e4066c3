#pragma once

#include "backend/auth_store.h"
#include "core/history_store.h"
#include "core/pipeline_coordinator.h"
#include "core/sound_cue.h"
#include "core/text_injector.h"
#include "support/fake_audio.h"
#include "support/fake_backend.h"
#include "support/fake_color_scheme.h"
#include "support/fake_desktop.h"
#include "support/hand_loop.h"
#include "ui/kit/v_theme.h"

#include <QTemporaryDir>

namespace velmora::test {

/// The program's objects around fakes, for one picture. Its clock stands at noon and moves only when a
/// picture says so.
class GalleryWorld {
public:
    GalleryWorld(bool dark, const QString& accent)
        : scheme(dark) {
        loop.advance(std::chrono::hours(12));
        settings.setThemeColor(accent);
    }

    /// Owner of what a picture makes for itself; gone with the view.
    [[nodiscard]] QObject* stage() { return &m_stage; }

    QTemporaryDir folder;
    HandLoop loop;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    FakeColorScheme scheme;
    VTheme theme{settings, scheme};

    FakeAudioEngine engine;
    FakeAudioCodec codec;
    AudioRecorder recorder{loop, defaults, engine, codec, folder.path()};
    HistoryStore history{folder.filePath(QStringLiteral("data"))};
    AuthStore auth{folder.filePath(QStringLiteral("data")), defaults};
    FakeDictateService server;
    FakeAccountSession account;
    FakeDesktop desktop;
    TextInjector injector{loop, desktop, desktop};
    FakeSoundPlayer player;
    SoundCue sounds{settings, player};
    FakeWorkspace workspace;
    PipelineCoordinator pipeline{
        {loop, recorder, settings, history, server, account, injector, sounds, workspace}};

private:
    QObject m_stage; // first to go: what stands on it looks at the rest
};

} // namespace velmora::test
