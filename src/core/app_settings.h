#pragma once

#include "foundation/date.h"
#include "foundation/user_defaults.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <optional>

namespace velmora {

/// Everything the user sets on this machine. Each property is one entry of the user defaults under the same
/// name: a key that was never written gives its default, writing stores at once, and nothing is validated.
/// Readers give unknown values a meaning of their own. Main thread only.
class AppSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(double minDuration READ minDuration WRITE setMinDuration NOTIFY minDurationChanged)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(QString hotkey READ hotkey WRITE setHotkey NOTIFY hotkeyChanged)
    Q_PROPERTY(qint64 hotkeyCustomMask READ hotkeyCustomMask WRITE setHotkeyCustomMask NOTIFY
                   hotkeyCustomMaskChanged)
    Q_PROPERTY(qint64 hotkeyCustomKeyCode READ hotkeyCustomKeyCode WRITE setHotkeyCustomKeyCode NOTIFY
                   hotkeyCustomKeyCodeChanged)
    Q_PROPERTY(QString hotkeyCustomLabel READ hotkeyCustomLabel WRITE setHotkeyCustomLabel NOTIFY
                   hotkeyCustomLabelChanged)
    Q_PROPERTY(QString fnStandIn READ fnStandIn WRITE setFnStandIn NOTIFY fnStandInChanged)
    Q_PROPERTY(QString micUniqueID READ micUniqueID WRITE setMicUniqueID NOTIFY micUniqueIDChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool showHUD READ showHUD WRITE setShowHUD NOTIFY showHUDChanged)
    Q_PROPERTY(QString hudSize READ hudSize WRITE setHudSize NOTIFY hudSizeChanged)
    Q_PROPERTY(QString hudStyle READ hudStyle WRITE setHudStyle NOTIFY hudStyleChanged)
    Q_PROPERTY(QString hudPosition READ hudPosition WRITE setHudPosition NOTIFY hudPositionChanged)
    Q_PROPERTY(bool hudMinimal READ hudMinimal WRITE setHudMinimal NOTIFY hudMinimalChanged)
    Q_PROPERTY(QString readySound READ readySound WRITE setReadySound NOTIFY readySoundChanged)
    Q_PROPERTY(bool hasOnboarded READ hasOnboarded WRITE setHasOnboarded NOTIFY hasOnboardedChanged)
    Q_PROPERTY(QString themeColor READ themeColor WRITE setThemeColor NOTIFY themeColorChanged)
    Q_PROPERTY(bool useStreamingDictation READ useStreamingDictation WRITE setUseStreamingDictation NOTIFY
                   useStreamingDictationChanged)
    Q_PROPERTY(bool meetingConsentAccepted READ meetingConsentAccepted WRITE setMeetingConsentAccepted NOTIFY
                   meetingConsentAcceptedChanged)
    Q_PROPERTY(double meetingConsentAcceptedAtTs READ meetingConsentAcceptedAtTs WRITE
                   setMeetingConsentAcceptedAtTs NOTIFY meetingConsentAcceptedAtTsChanged)
    Q_PROPERTY(qint64 meetingAudioRetentionDays READ meetingAudioRetentionDays WRITE
                   setMeetingAudioRetentionDays NOTIFY meetingAudioRetentionDaysChanged)
    Q_PROPERTY(bool pendingMeetingStart READ pendingMeetingStart WRITE setPendingMeetingStart NOTIFY
                   pendingMeetingStartChanged)
    Q_PROPERTY(bool callDetectionEnabled READ callDetectionEnabled WRITE setCallDetectionEnabled NOTIFY
                   callDetectionEnabledChanged)
    Q_PROPERTY(QString callDetectionMutedAppsRaw READ callDetectionMutedAppsRaw WRITE
                   setCallDetectionMutedAppsRaw NOTIFY callDetectionMutedAppsRawChanged)

public:
    explicit AppSettings(UserDefaults& defaults, QObject* parent = nullptr);

    /// Shortest recording that goes to the backend, seconds.
    [[nodiscard]] double minDuration() const;
    void setMinDuration(double value);
    /// "push-to-talk" or "toggle".
    [[nodiscard]] QString mode() const;
    void setMode(const QString& value);
    /// "fn", "ralt", "rcmd" or "custom".
    [[nodiscard]] QString hotkey() const;
    void setHotkey(const QString& value);
    /// Modifier bits of a custom hotkey.
    [[nodiscard]] qint64 hotkeyCustomMask() const;
    void setHotkeyCustomMask(qint64 value);
    /// Virtual key code of a custom hotkey, -1 for modifiers only.
    [[nodiscard]] qint64 hotkeyCustomKeyCode() const;
    void setHotkeyCustomKeyCode(qint64 value);
    /// What the window shows for a custom hotkey.
    [[nodiscard]] QString hotkeyCustomLabel() const;
    void setHotkeyCustomLabel(const QString& value);
    /// The key that plays Fn, see fn_stand_in.h.
    [[nodiscard]] QString fnStandIn() const;
    void setFnStandIn(const QString& value);
    /// The chosen microphone; empty for the system's default.
    [[nodiscard]] QString micUniqueID() const;
    void setMicUniqueID(const QString& value);
    /// The wish to start at login; stored only.
    [[nodiscard]] bool launchAtLogin() const;
    void setLaunchAtLogin(bool value);
    /// Show the recording capsule.
    [[nodiscard]] bool showHUD() const;
    void setShowHUD(bool value);
    /// "small", "medium" or "large".
    [[nodiscard]] QString hudSize() const;
    void setHudSize(const QString& value);
    /// "bars", "wave" or "dots".
    [[nodiscard]] QString hudStyle() const;
    void setHudStyle(const QString& value);
    /// "bottom" or "top".
    [[nodiscard]] QString hudPosition() const;
    void setHudPosition(const QString& value);
    /// Minimal form of the capsule.
    [[nodiscard]] bool hudMinimal() const;
    void setHudMinimal(bool value);
    /// "Нет", "Тихий" or "Системный".
    [[nodiscard]] QString readySound() const;
    void setReadySound(const QString& value);
    /// Onboarding was finished or closed.
    [[nodiscard]] bool hasOnboarded() const;
    void setHasOnboarded(bool value);
    /// "lime" or "teal".
    [[nodiscard]] QString themeColor() const;
    void setThemeColor(const QString& value);
    /// Stored only.
    [[nodiscard]] bool useStreamingDictation() const;
    void setUseStreamingDictation(bool value);
    /// The recording-consent screen was accepted.
    [[nodiscard]] bool meetingConsentAccepted() const;
    void setMeetingConsentAccepted(bool value);
    /// When, Unix seconds; 0 for never.
    [[nodiscard]] double meetingConsentAcceptedAtTs() const;
    void setMeetingConsentAcceptedAtTs(double value);
    /// Days that local meeting audio is kept.
    [[nodiscard]] qint64 meetingAudioRetentionDays() const;
    void setMeetingAudioRetentionDays(qint64 value);
    /// Start a meeting after the relaunch.
    [[nodiscard]] bool pendingMeetingStart() const;
    void setPendingMeetingStart(bool value);
    /// Propose recording when a call is noticed.
    [[nodiscard]] bool callDetectionEnabled() const;
    void setCallDetectionEnabled(bool value);
    /// Application names muted for call detection, comma separated.
    [[nodiscard]] QString callDetectionMutedAppsRaw() const;
    void setCallDetectionMutedAppsRaw(const QString& value);

    /// None when the consent was never given; writing none stores 0.
    [[nodiscard]] std::optional<Date> meetingConsentAcceptedAt() const;
    void setMeetingConsentAcceptedAt(std::optional<Date> date);

    [[nodiscard]] QSet<QString> callDetectionMutedApps() const;
    void muteCallDetection(const QString& appName);

Q_SIGNALS:
    void minDurationChanged();
    void modeChanged();
    void hotkeyChanged();
    void hotkeyCustomMaskChanged();
    void hotkeyCustomKeyCodeChanged();
    void hotkeyCustomLabelChanged();
    void fnStandInChanged();
    void micUniqueIDChanged();
    void launchAtLoginChanged();
    void showHUDChanged();
    void hudSizeChanged();
    void hudStyleChanged();
    void hudPositionChanged();
    void hudMinimalChanged();
    void readySoundChanged();
    void hasOnboardedChanged();
    void themeColorChanged();
    void useStreamingDictationChanged();
    void meetingConsentAcceptedChanged();
    void meetingConsentAcceptedAtTsChanged();
    void meetingAudioRetentionDaysChanged();
    void pendingMeetingStartChanged();
    void callDetectionEnabledChanged();
    void callDetectionMutedAppsRawChanged();

private:
    void announce(const QString& key);

    UserDefaults& m_defaults;
};

} // namespace velmora
