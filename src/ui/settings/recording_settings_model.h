#pragma once

#include "core/level_test.h"
#include "ui/hud/recording_hud_model.h"
#include "ui/settings/hotkey_settings_model.h"
#include "ui/settings/microphone_choices.h"
#include "ui/settings/settings_neighbours.h"

namespace velmora {

/// How one dictates: the hotkey, the microphone and the capsule. What has a few values goes by its labels.
class RecordingSettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the settings'")
    Q_PROPERTY(velmora::HotkeySettingsModel* hotkey READ hotkey CONSTANT)
    Q_PROPERTY(QVariantList modes READ modes CONSTANT)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)

    Q_PROPERTY(QVariantList microphones READ microphones NOTIFY microphonesChanged)
    /// The chosen one's ID; empty for the system's default.
    Q_PROPERTY(QString microphone READ microphone WRITE setMicrophone NOTIFY microphonesChanged)
    /// What becomes of a microphone that isn't there.
    Q_PROPERTY(QString microphoneHint READ microphoneHint NOTIFY microphonesChanged)
    Q_PROPERTY(velmora::LevelSource* voice READ voice CONSTANT)
    Q_PROPERTY(QString levelHint READ levelHint NOTIFY levelHintChanged)
    Q_PROPERTY(bool levelFails READ levelFails NOTIFY levelHintChanged)
    Q_PROPERTY(double shortestMinDuration MEMBER shortestMinDuration CONSTANT)
    Q_PROPERTY(double longestMinDuration MEMBER longestMinDuration CONSTANT)
    Q_PROPERTY(double minDurationStep MEMBER minDurationStep CONSTANT)
    /// Seconds; the nearest of the range for a stored value outside of it.
    Q_PROPERTY(double minDuration READ minDuration WRITE setMinDuration NOTIFY minDurationChanged)
    Q_PROPERTY(QString minDurationText READ minDurationText NOTIFY minDurationChanged)

    Q_PROPERTY(bool showHUD READ showHUD WRITE setShowHUD NOTIFY showHUDChanged)
    Q_PROPERTY(QVariantList hudStyles READ hudStyles CONSTANT)
    Q_PROPERTY(QString hudStyle READ hudStyle WRITE setHudStyle NOTIFY hudStyleChanged)
    Q_PROPERTY(QVariantList hudSizes READ hudSizes CONSTANT)
    Q_PROPERTY(QString hudSize READ hudSize WRITE setHudSize NOTIFY hudSizeChanged)
    Q_PROPERTY(QVariantList hudPositions READ hudPositions CONSTANT)
    Q_PROPERTY(QString hudPosition READ hudPosition WRITE setHudPosition NOTIFY hudPositionChanged)
    Q_PROPERTY(bool hudMinimal READ hudMinimal WRITE setHudMinimal NOTIFY hudMinimalChanged)
    /// A capsule that hears what the level test does.
    Q_PROPERTY(velmora::RecordingHUDModel* capsule READ capsule CONSTANT)
    /// How high the pictured screen is that shows it, and where on it the capsule's panel begins.
    Q_PROPERTY(int previewHeight MEMBER previewHeight CONSTANT)
    Q_PROPERTY(int capsuleY READ capsuleY NOTIFY capsuleYChanged)

    Q_PROPERTY(bool callDetection READ callDetection WRITE setCallDetection NOTIFY callDetectionChanged)
    /// Whether somebody sees these settings: only then is the microphone listened to, or a hotkey captured.
    Q_PROPERTY(bool onScreen READ isOnScreen WRITE setOnScreen NOTIFY onScreenChanged)

public:
    static constexpr double shortestMinDuration = 0.1;
    static constexpr double longestMinDuration = 2;
    static constexpr double minDurationStep = 0.1;
    static constexpr int previewHeight = 140;

    explicit RecordingSettingsModel(const SettingsNeighbours& neighbours, QObject* parent = nullptr);
    ~RecordingSettingsModel() override;

    [[nodiscard]] HotkeySettingsModel* hotkey() { return &m_hotkey; }
    [[nodiscard]] QVariantList modes() const;
    [[nodiscard]] QString mode() const;
    void setMode(const QString& label);

    [[nodiscard]] QVariantList microphones();
    [[nodiscard]] QString microphone() const;
    void setMicrophone(const QString& uniqueID);
    [[nodiscard]] QString microphoneHint();
    [[nodiscard]] LevelSource* voice() const { return &m_levelTest; }
    [[nodiscard]] QString levelHint() const;
    [[nodiscard]] bool levelFails() const { return !m_levelTest.problem().isEmpty(); }
    [[nodiscard]] double minDuration() const;
    void setMinDuration(double seconds);
    [[nodiscard]] QString minDurationText() const;

    [[nodiscard]] bool showHUD() const;
    void setShowHUD(bool shown);
    [[nodiscard]] QVariantList hudStyles() const;
    [[nodiscard]] QString hudStyle() const;
    void setHudStyle(const QString& label);
    [[nodiscard]] QVariantList hudSizes() const;
    [[nodiscard]] QString hudSize() const;
    void setHudSize(const QString& label);
    [[nodiscard]] QVariantList hudPositions() const;
    [[nodiscard]] QString hudPosition() const;
    void setHudPosition(const QString& label);
    [[nodiscard]] bool hudMinimal() const;
    void setHudMinimal(bool minimal);
    [[nodiscard]] RecordingHUDModel* capsule() { return &m_capsule; }
    /// As the panel takes it from the store, where a size or a position that was never chosen counts as
    /// others than the settings' defaults.
    [[nodiscard]] int capsuleY() const;

    [[nodiscard]] bool callDetection() const;
    void setCallDetection(bool enabled);
    [[nodiscard]] bool isOnScreen() const { return m_isOnScreen; }
    void setOnScreen(bool onScreen);

Q_SIGNALS:
    void modeChanged();
    void microphonesChanged();
    void levelHintChanged();
    void minDurationChanged();
    void showHUDChanged();
    void hudStyleChanged();
    void hudSizeChanged();
    void hudPositionChanged();
    void hudMinimalChanged();
    void capsuleYChanged();
    void callDetectionChanged();
    void onScreenChanged();

private:
    void followSettings();
    void storeMinDuration();
    void lookAtInputs();

    MainLoop& m_loop;
    AppSettings& m_settings;
    const UserDefaults& m_defaults;
    AudioInputs& m_inputs;
    LevelTest& m_levelTest;
    HotkeySettingsModel m_hotkey;
    RecordingHUDModel m_capsule;
    MicrophoneChoices m_microphones;
    std::optional<double> m_newMinDuration; // for a frame, until it is stored
    Timer m_storing;
    bool m_isOnScreen = false;
    Timer m_seconds; // of the take that the preview plays
    double m_elapsed = 0;
};

} // namespace velmora
