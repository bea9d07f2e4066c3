#include "recording_settings_fixture.h"

#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

class RecordingSettingsModelTest : public RecordingSettingsTest {};

} // namespace

TEST_F(RecordingSettingsModelTest, MinDuration_IsShownWithinItsRangeAndNotWrittenBack) {
    struct Case {
        double stored;
        double shown;
        const char* text;
    };
    for (const Case& c : {Case{0.4, 0.4, "0,4 с"}, Case{0, 0.1, "0,1 с"}, Case{-3, 0.1, "0,1 с"},
                          Case{17, 2, "2,0 с"}, Case{1, 1, "1,0 с"}}) {
        settings.setMinDuration(c.stored);
        EXPECT_EQ(model.minDuration(), c.shown);
        EXPECT_EQ(model.minDurationText().toStdString(), c.text);
        EXPECT_EQ(settings.minDuration(), c.stored);
    }
}

TEST_F(RecordingSettingsModelTest, MinDuration_IsStoredInTenths) {
    model.setMinDuration(0.1 + 0.2);
    EXPECT_EQ(model.minDuration(), 0.3); // shown at once, and stored when that is drawn
    EXPECT_EQ(settings.minDuration(), 0.4);
    loop.advance(std::chrono::milliseconds(20));
    EXPECT_EQ(settings.minDuration(), 0.3);
    const QSignalSpy changes(&model, &RecordingSettingsModel::minDurationChanged);
    model.setMinDuration(0.3);
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(RecordingSettingsModelTest, UnknownStoredValues_ShowTheirFallback) {
    for (const auto set : {&AppSettings::setMode, &AppSettings::setHudStyle, &AppSettings::setHudSize,
                           &AppSettings::setHudPosition})
        (settings.*set)(QStringLiteral("sideways"));
    EXPECT_EQ(model.mode(), QStringLiteral("Push-to-talk"));
    EXPECT_EQ(model.hudStyle(), QStringLiteral("Полосы"));
    EXPECT_EQ(model.hudSize(), QStringLiteral("Средний"));
    EXPECT_EQ(model.hudPosition(), QStringLiteral("Сверху"));
    EXPECT_EQ(settings.hudSize(), QStringLiteral("sideways"));
}

TEST_F(RecordingSettingsModelTest, ChangedElsewhere_IsSaid) {
    using Self = RecordingSettingsModel;
    const std::tuple<void (Self::*)(), const char*, QJsonValue> cases[] = {
        {&Self::modeChanged, "mode", QStringLiteral("toggle")},
        {&Self::microphonesChanged, "micUniqueID", QStringLiteral("usb")},
        {&Self::minDurationChanged, "minDuration", 1.5},
        {&Self::showHUDChanged, "showHUD", false},
        {&Self::hudStyleChanged, "hudStyle", QStringLiteral("dots")},
        {&Self::hudSizeChanged, "hudSize", QStringLiteral("large")},
        {&Self::capsuleYChanged, "hudSize", QStringLiteral("medium")},
        {&Self::hudPositionChanged, "hudPosition", QStringLiteral("top")},
        {&Self::capsuleYChanged, "hudPosition", QStringLiteral("bottom")},
        {&Self::hudMinimalChanged, "hudMinimal", false},
        {&Self::callDetectionChanged, "callDetectionEnabled", false},
    };
    for (const auto& [signal, key, value] : cases) {
        const QSignalSpy changes(&model, signal);
        const QString name = QLatin1String(key);
        value.isBool()     ? defaults.set(name, value.toBool())
        : value.isDouble() ? defaults.set(name, value.toDouble())
                           : defaults.set(name, value.toString());
        EXPECT_EQ(changes.size(), 1) << key;
    }
}

TEST_F(RecordingSettingsModelTest, Capsule_LiesWhereItsPanelWould) {
    struct Case {
        const char* position;
        const char* size;
        int y;
    };
    for (const Case& c : {Case{"top", "small", -8}, Case{"top", "large", -8},
                          Case{"bottom", "small", 140 - 6 - 60}, Case{"bottom", "medium", 140 - 6 - 66},
                          Case{"bottom", "large", 140 - 6 - 76}, Case{"sideways", "small", -8}}) {
        settings.setHudPosition(QLatin1String(c.position));
        settings.setHudSize(QLatin1String(c.size));
        EXPECT_EQ(model.capsuleY(), c.y) << c.position << c.size;
    }
}

TEST_F(RecordingSettingsModelTest, NoPlaceChosenYet_CapsuleLiesWhereThePanelGoesByItself) {
    EXPECT_EQ(model.capsuleY(), -8);
    EXPECT_EQ(model.hudPosition(), QStringLiteral("Снизу"));
}

TEST_F(RecordingSettingsModelTest, OnScreen_TheMicrophoneIsHeardAndTheCapsuleRecords) {
    settings.setHudMinimal(false);
    EXPECT_FALSE(stage.levelEngine.running);
    model.setOnScreen(true);
    EXPECT_TRUE(stage.levelEngine.running);
    speak(1);
    EXPECT_EQ(model.voice()->level(), 1);
    EXPECT_EQ(model.capsule()->voice()->levels().back(), 1);
    EXPECT_EQ(model.capsule()->content().timer, QStringLiteral("00:00"));
    loop.advance(std::chrono::seconds(62));
    EXPECT_EQ(model.capsule()->content().timer, QStringLiteral("01:02"));

    hotkey.toggleCapture();
    model.setOnScreen(false);
    EXPECT_FALSE(stage.levelEngine.running);
    EXPECT_FALSE(stage.levelEngine.tap);
    EXPECT_EQ(model.voice()->level(), 0);
    EXPECT_FALSE(hotkey.isCapturing());
    loop.advance(std::chrono::milliseconds(100)); // and the hotkey counts again
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(RecordingSettingsModelTest, GoneWhileOnScreen_StopsListening) {
    {
        RecordingSettingsModel other(stage.neighbours);
        other.setOnScreen(true);
        ASSERT_TRUE(stage.levelEngine.running);
    }
    EXPECT_FALSE(stage.levelEngine.running);
}

TEST_F(RecordingSettingsModelTest, Problem_TakesTheHintsPlaceUntilTheDevicesChange) {
    const QString usual = QStringLiteral("Скажите что-нибудь — должны двигаться полоски");
    EXPECT_EQ(model.levelHint(), usual);
    stage.levelEngine.authorizationStatus = MicrophoneAuthorization::Denied;
    const QSignalSpy changes(&model, &RecordingSettingsModel::levelHintChanged);
    model.setOnScreen(true);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(model.levelFails());
    EXPECT_EQ(model.levelHint(), stage.levelTest.problem());
    EXPECT_NE(model.levelHint(), usual);

    stage.levelEngine.authorizationStatus = MicrophoneAuthorization::Authorized;
    stage.inputs.setInputs({{QStringLiteral("new"), QStringLiteral("Новый")}});
    EXPECT_FALSE(model.levelFails());
    EXPECT_EQ(model.levelHint(), usual);
    EXPECT_TRUE(stage.levelEngine.running);
}

TEST_F(RecordingSettingsModelTest, DevicesChangeWhileNobodyLooks_NothingIsOpened) {
    const QSignalSpy changes(&model, &RecordingSettingsModel::microphonesChanged);
    stage.inputs.setInputs({});
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(model.microphones().size(), 1);
    EXPECT_EQ(stage.levelEngine.starts, 0);
}

TEST_F(RecordingSettingsModelTest, ChosenMicrophoneIsUnplugged_StaysChosenAndIsTold) {
    model.setMicrophone(QStringLiteral("usb"));
    EXPECT_EQ(settings.micUniqueID(), QStringLiteral("usb"));
    EXPECT_EQ(model.microphoneHint(), QString());
    stage.inputs.setInputs({});
    EXPECT_EQ(model.microphone(), QStringLiteral("usb"));
    EXPECT_EQ(model.microphones().size(), 2);
    EXPECT_EQ(model.microphoneHint(), QStringLiteral("Не подключён, пока слушает системный"));
}

TEST_F(RecordingSettingsModelTest, AnotherMicrophone_IsListenedToAtOnce) {
    model.setOnScreen(true);
    model.setMicrophone(QStringLiteral("usb"));
    EXPECT_EQ(stage.levelEngine.device, QStringLiteral("usb"));
    EXPECT_EQ(stage.levelEngine.starts, 2);
}
