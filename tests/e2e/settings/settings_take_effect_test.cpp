#include "core/app_settings.h"
#include "e2e/session/dictation_session.h"
#include "e2e/session/user_hand.h"
#include "foundation/user_folders.h"
#include "support/desktop/wait_until.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr QRgb lime = 0xFFA8CC5A;
constexpr QRgb teal = 0xFF80CBC4;

QByteArray pactl(const QStringList& arguments) {
    return output(QStringLiteral("pactl"), arguments);
}

/// A change of the settings by another process while the program runs; it counts from the next key press on.
class SettingsTakeEffectTest : public testing::Test {
protected:
    void TearDown() override {
        if (HasFailure()) {
            screenshot().save(QStringLiteral("settings-failure.png"));
            std::cout << session.application().output().toStdString();
        }
    }

    /// Waits until the program has seen what was written: it looks at the file when the system tells it.
    void changeSeen() {
        // The answer comes over the same loop that reads the file.
        EXPECT_EQ(DictationSession::velmora(QStringLiteral("--release")), 0);
    }

    /// How many points of the capsule's place are like that.
    static int points(const std::function<bool(QRgb)>& alike) {
        const QImage now = screenshot();
        int count = 0;
        for (int x = now.width() / 2 - 120; x < now.width() / 2 + 120; ++x) {
            for (int y = 0; y < 120; ++y)
                count += alike(now.pixel(x, y));
        }
        return count;
    }
    static int pointsOf(QRgb color) {
        return points([color](QRgb point) {
            return std::abs(qRed(point) - qRed(color)) < 16 && std::abs(qGreen(point) - qGreen(color)) < 16 &&
                   std::abs(qBlue(point) - qBlue(color)) < 16;
        });
    }
    static bool capsuleShows() {
        return points([](QRgb point) { return qGray(point) < 60; }) > 500;
    }

    /// A dictation by that key into that microphone, with a look at the capsule before the first word.
    void dictate(xcb_keycode_t key, const QString& feed, const std::function<void()>& look) {
        session.keyboard().press(key);
        EXPECT_TRUE(DictationSession::isRecording());
        look();
        session.speak(feed);
        session.keyboard().release(key);
        const std::optional<HistoryItem> item = session.dictation(++m_dictations);
        ASSERT_TRUE(item);
        EXPECT_GE(DictationSession::wordsHeard(item->cleanedText), 8) << item->cleanedText.toStdString();
    }
    void dictate(const std::function<void()>& look) {
        dictate(key::rightControl, QStringLiteral("virtual_mic_feed"), look);
    }

    DictationSession session;
    UserDefaults defaults{defaultsPath()};
    AppSettings settings{defaults};

private:
    std::size_t m_dictations = 0;
};

} // namespace

TEST_F(SettingsTakeEffectTest, MicrophoneChosen_TheNextDictationListensToIt) {
    pactl({QStringLiteral("load-module"), QStringLiteral("module-null-sink"),
           QStringLiteral("sink_name=desk_feed"), QStringLiteral("norewinds=1")});
    pactl({QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
           QStringLiteral("master=desk_feed.monitor"), QStringLiteral("source_name=desk_mic")});
    settings.setMicUniqueID(QStringLiteral("desk_mic"));
    changeSeen();
    dictate(key::rightControl, QStringLiteral("desk_feed"), [] {});
}

TEST_F(SettingsTakeEffectTest, HotkeyChosen_TheNextPressOfItDictatesAndTheOldOneDoesNot) {
    settings.setHotkey(QStringLiteral("ralt"));
    changeSeen();
    // Were this still the hotkey, the press that follows would be the second tap, and would latch the
    // recording.
    session.keyboard().tap(key::rightControl);
    dictate(key::rightAlt, QStringLiteral("virtual_mic_feed"), [] {});
}

TEST_F(SettingsTakeEffectTest, AccentChosen_TheNextCapsuleWearsIt) {
    dictate([] { EXPECT_TRUE(waitUntil([] { return pointsOf(lime) > 8; })); });
    settings.setThemeColor(QStringLiteral("teal"));
    changeSeen();
    dictate([] {
        EXPECT_TRUE(waitUntil([] { return pointsOf(teal) > 8; }));
        EXPECT_EQ(pointsOf(lime), 0);
    });
}

TEST_F(SettingsTakeEffectTest, StyleChosen_TheNextCapsuleHasIt) {
    settings.setHudSize(QStringLiteral("large"));
    changeSeen();
    // Silence: bars have their shortest length, a curve none at all.
    dictate([] { EXPECT_TRUE(waitUntil([] { return pointsOf(lime) > 8; })); });
    settings.setHudStyle(QStringLiteral("wave"));
    changeSeen();
    dictate([] { EXPECT_TRUE(waitUntil([] { return capsuleShows() && pointsOf(lime) == 0; })); });
}
