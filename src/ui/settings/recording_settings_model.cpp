#include "ui/settings/recording_settings_model.h"

#include "platform/audio_inputs.h"
#include "ui/hud/hud_placement.h"
#include "ui/settings/setting_labels.h"

namespace velmora {
namespace {

constexpr auto second = std::chrono::seconds(1);
// Storing takes as long as the disk does, and the slider is to be drawn first.
constexpr auto aFrame = std::chrono::milliseconds(20);

} // namespace

RecordingSettingsModel::RecordingSettingsModel(const SettingsNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_loop(neighbours.loop)
    , m_settings(neighbours.settings)
    , m_defaults(neighbours.defaults)
    , m_inputs(neighbours.inputs)
    , m_levelTest(neighbours.levelTest)
    , m_hotkey(neighbours)
    , m_capsule(neighbours.levelTest, neighbours.settings) {
    m_capsule.setState(pipeline_state::Recording{});
    followSettings();
    connect(&m_inputs, &AudioInputs::inputsChanged, this, &RecordingSettingsModel::lookAtInputs);
    connect(&m_levelTest, &LevelTest::problemChanged, this, &RecordingSettingsModel::levelHintChanged);
}

RecordingSettingsModel::~RecordingSettingsModel() {
    if (m_isOnScreen)
        m_levelTest.stop();
    storeMinDuration();
}

void RecordingSettingsModel::followSettings() {
    using Self = RecordingSettingsModel;
    const std::pair<void (AppSettings::*)(), void (Self::*)()> signalPairs[] = {
        {&AppSettings::modeChanged, &Self::modeChanged},
        {&AppSettings::micUniqueIDChanged, &Self::microphonesChanged},
        {&AppSettings::minDurationChanged, &Self::minDurationChanged},
        {&AppSettings::showHUDChanged, &Self::showHUDChanged},
        {&AppSettings::hudStyleChanged, &Self::hudStyleChanged},
        {&AppSettings::hudSizeChanged, &Self::hudSizeChanged},
        {&AppSettings::hudSizeChanged, &Self::capsuleYChanged},
        {&AppSettings::hudPositionChanged, &Self::hudPositionChanged},
        {&AppSettings::hudPositionChanged, &Self::capsuleYChanged},
        {&AppSettings::hudMinimalChanged, &Self::hudMinimalChanged},
        {&AppSettings::callDetectionEnabledChanged, &Self::callDetectionChanged},
    };
    for (const auto& [from, to] : signalPairs)
        connect(&m_settings, from, this, to);
}

QVariantList RecordingSettingsModel::modes() const {
    return modeLabels.labels();
}

QString RecordingSettingsModel::mode() const {
    return modeLabels.label(m_settings.mode());
}

void RecordingSettingsModel::setMode(const QString& label) {
    m_settings.setMode(modeLabels.value(label));
}

QVariantList RecordingSettingsModel::microphones() {
    m_microphones.see(m_inputs.inputs());
    return m_microphones.options(microphone());
}

QString RecordingSettingsModel::microphone() const {
    return m_settings.micUniqueID();
}

void RecordingSettingsModel::setMicrophone(const QString& uniqueID) {
    m_settings.setMicUniqueID(uniqueID);
}

QString RecordingSettingsModel::microphoneHint() {
    m_microphones.see(m_inputs.inputs());
    return m_microphones.isMissing(microphone()) ? QStringLiteral("Не подключён, пока слушает системный")
                                                 : QString();
}

void RecordingSettingsModel::lookAtInputs() {
    m_levelTest.restart();
    Q_EMIT microphonesChanged();
}

QString RecordingSettingsModel::levelHint() const {
    return levelFails() ? m_levelTest.problem()
                        : QStringLiteral("Скажите что-нибудь — должны двигаться полоски");
}

double RecordingSettingsModel::minDuration() const {
    return std::clamp(m_newMinDuration.value_or(m_settings.minDuration()), shortestMinDuration,
                      longestMinDuration);
}

// A slider's steps add up to values such as 0.30000000000000004.
void RecordingSettingsModel::setMinDuration(double seconds) {
    const double tenths = std::round(seconds * 10) / 10;
    if (tenths == m_newMinDuration.value_or(m_settings.minDuration()))
        return;
    m_newMinDuration = tenths;
    m_storing = m_loop.after(aFrame, [this] { storeMinDuration(); });
    Q_EMIT minDurationChanged();
}

void RecordingSettingsModel::storeMinDuration() {
    m_storing.invalidate();
    if (const std::optional<double> seconds = std::exchange(m_newMinDuration, {}))
        m_settings.setMinDuration(*seconds);
}

QString RecordingSettingsModel::minDurationText() const {
    return QLocale(QLocale::Russian).toString(minDuration(), 'f', 1) + QStringLiteral(" с");
}

bool RecordingSettingsModel::showHUD() const {
    return m_settings.showHUD();
}

void RecordingSettingsModel::setShowHUD(bool shown) {
    m_settings.setShowHUD(shown);
}

QVariantList RecordingSettingsModel::hudStyles() const {
    return hudStyleLabels.labels();
}

QString RecordingSettingsModel::hudStyle() const {
    return hudStyleLabels.label(m_settings.hudStyle());
}

void RecordingSettingsModel::setHudStyle(const QString& label) {
    m_settings.setHudStyle(hudStyleLabels.value(label));
}

QVariantList RecordingSettingsModel::hudSizes() const {
    return hudSizeLabels.labels();
}

QString RecordingSettingsModel::hudSize() const {
    return hudSizeLabels.label(m_settings.hudSize());
}

void RecordingSettingsModel::setHudSize(const QString& label) {
    m_settings.setHudSize(hudSizeLabels.value(label));
}

QVariantList RecordingSettingsModel::hudPositions() const {
    return hudPositionLabels.labels();
}

QString RecordingSettingsModel::hudPosition() const {
    return hudPositionLabels.label(m_settings.hudPosition());
}

void RecordingSettingsModel::setHudPosition(const QString& label) {
    m_settings.setHudPosition(hudPositionLabels.value(label));
}

bool RecordingSettingsModel::hudMinimal() const {
    return m_settings.hudMinimal();
}

void RecordingSettingsModel::setHudMinimal(bool minimal) {
    m_settings.setHudMinimal(minimal);
}

int RecordingSettingsModel::capsuleY() const {
    const QRect screen(0, 0, 2 * previewHeight, previewHeight);
    return hudPanelFrame({.frame = screen, .visibleFrame = screen},
                         m_defaults.string(QStringLiteral("hudSize")),
                         m_defaults.string(QStringLiteral("hudPosition")))
        .y();
}

bool RecordingSettingsModel::callDetection() const {
    return m_settings.callDetectionEnabled();
}

void RecordingSettingsModel::setCallDetection(bool enabled) {
    m_settings.setCallDetectionEnabled(enabled);
}

void RecordingSettingsModel::setOnScreen(bool onScreen) {
    if (onScreen == m_isOnScreen)
        return;
    m_isOnScreen = onScreen;
    if (onScreen) {
        m_levelTest.start();
        m_seconds = m_loop.every(second, [this] {
            m_elapsed += 1;
            m_capsule.setState(pipeline_state::Recording{m_elapsed});
        });
    } else {
        m_seconds.invalidate();
        m_levelTest.stop();
        m_hotkey.stopCapture();
    }
    Q_EMIT onScreenChanged();
}

} // namespace velmora
