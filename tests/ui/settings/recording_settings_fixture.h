#pragma once

#include "support/settings_stage.h"
#include "ui/settings/recording_settings_model.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace velmora::test {

/// The settings of the dictation on fakes.
class RecordingSettingsTest : public testing::Test {
protected:
    static constexpr int keyP = 35;
    static constexpr int keyEscape = 53;

    void useCustomHotkey(const char* label) {
        settings.setHotkeyCustomLabel(QString::fromUtf8(label));
        settings.setHotkey(QStringLiteral("custom"));
    }
    void speak(float sample) {
        stage.levelEngine.speak(std::vector<float>(960, sample));
        loop.runPosted();
    }

    HandLoop loop;
    FakeWorkspace workspace;
    InfoDictionary info{{}};
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    AuthStore auth{folder.path(), defaults};
    SettingsStage stage{loop, defaults, settings, auth, workspace, info};
    RecordingSettingsModel model{stage.neighbours};
    HotkeySettingsModel& hotkey = *model.hotkey();
};

} // namespace velmora::test
