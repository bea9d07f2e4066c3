#pragma once

#include "platform/key_event_monitors.h"

#include <QObject>

namespace velmora {

/// The key or combination that the user pressed to be the hotkey.
struct CapturedHotkey {
    int keyCode = -1; ///< virtual key code, -1 for modifiers alone
    quint64 mask = 0; ///< generic modifier bits with a key, left/right bits for modifiers alone
    QString label;    ///< what the window shows

    bool operator==(const CapturedHotkey&) const = default;
};

/// Lets the user press what is to start dictation: modifiers alone, pressed and released, or a key with at
/// least one modifier, or a function key. Main thread.
class HotkeyRecorder : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(QString capturedLabel READ capturedLabel NOTIFY capturedLabelChanged)
    Q_PROPERTY(bool needsModifierHint READ needsModifierHint NOTIFY needsModifierHintChanged)

public:
    using Captured = std::function<void(const CapturedHotkey&)>;

    explicit HotkeyRecorder(KeyEventMonitors& monitors, QObject* parent = nullptr);
    ~HotkeyRecorder() override;

    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// Whether the session lets the capture that is running see the keyboard.
    [[nodiscard]] bool seesKeyboard() const { return m_flagsMonitor && m_keyMonitor; }
    /// The label of the last capture; empty from the next start on.
    [[nodiscard]] const QString& capturedLabel() const { return m_capturedLabel; }
    /// A plain key was pressed, which can't be a hotkey: it would fire while typing.
    [[nodiscard]] bool needsModifierHint() const { return m_needsModifierHint; }

    /// Begins a capture; does nothing while one is running. Esc ends it without calling `onCaptured`.
    void start(Captured onCaptured);
    void stop();

    /// "Right ⌥ + Left ⌘" for left/right bits and Fn; the number for a mask without any of them.
    [[nodiscard]] static QString modifierLabelForDeviceMask(quint64 mask);
    /// "⌃⌥" for generic bits; empty for none.
    [[nodiscard]] static QString modifierLabelForGenericMask(quint64 mask);

Q_SIGNALS:
    void isRecordingChanged();
    void capturedLabelChanged();
    void needsModifierHintChanged();

private:
    void handleFlags(const KeyEvent& event);
    void handleKeyDown(const KeyEvent& event);
    void capture(const CapturedHotkey& captured);
    void setRecording(bool recording);
    void setCapturedLabel(const QString& label);
    void setNeedsModifierHint(bool needed);

    KeyEventMonitors& m_monitors;
    bool m_isRecording = false;
    QString m_capturedLabel;
    bool m_needsModifierHint = false;
    std::unique_ptr<KeyEventMonitor> m_flagsMonitor;
    std::unique_ptr<KeyEventMonitor> m_keyMonitor;
    quint64 m_peakDeviceMask = 0; // every modifier that was down at any moment of the gesture
    bool m_sawKeyDown = false;    // the release of modifiers that follows ends no gesture of their own
    Captured m_onCaptured;
};

} // namespace velmora
