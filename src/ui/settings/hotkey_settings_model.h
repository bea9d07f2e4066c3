#pragma once

#include "core/hotkey_recorder.h"
#include "foundation/main_loop.h"
#include "ui/settings/settings_neighbours.h"

#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The dictation's hotkey: what it is, a few to choose from, and the capture of any other. While a capture
/// runs, no key dictates.
class HotkeySettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the settings'")
    /// The hotkey; "…" while another is captured.
    Q_PROPERTY(QString label READ label NOTIFY changed)
    /// What to do with the hotkey, or what to press for another.
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    /// The hint asks for something else than what was done.
    Q_PROPERTY(bool hintWarns READ hintWarns NOTIFY changed)
    /// Which key plays Fn here; empty when that is of no interest now.
    Q_PROPERTY(QString note READ note NOTIFY changed)
    Q_PROPERTY(bool capturing READ isCapturing NOTIFY changed)
    Q_PROPERTY(QString captureTitle READ captureTitle NOTIFY changed)
    Q_PROPERTY(QVariantList quickChoices READ quickChoices CONSTANT)
    /// The stored value; none of the quick choices for a custom hotkey.
    Q_PROPERTY(QString chosen READ chosen WRITE choose NOTIFY changed)
    Q_PROPERTY(bool isFn READ isFn NOTIFY changed)
    Q_PROPERTY(QVariantList fnKeys READ fnKeys CONSTANT)
    /// The key that plays Fn, as it is stored.
    Q_PROPERTY(QString fnKey READ fnKey WRITE setFnKey NOTIFY changed)

public:
    explicit HotkeySettingsModel(const SettingsNeighbours& neighbours, QObject* parent = nullptr);
    ~HotkeySettingsModel() override;

    [[nodiscard]] QString label() const;
    [[nodiscard]] QString hint() const;
    [[nodiscard]] bool hintWarns() const;
    [[nodiscard]] QString note() const;
    [[nodiscard]] bool isCapturing() const { return m_recorder.isRecording(); }
    [[nodiscard]] QString captureTitle() const;
    [[nodiscard]] QVariantList quickChoices() const;
    [[nodiscard]] QString chosen() const;
    void choose(const QString& hotkey);
    [[nodiscard]] bool isFn() const;
    [[nodiscard]] QVariantList fnKeys() const;
    [[nodiscard]] QString fnKey() const;
    void setFnKey(const QString& name);

    /// Begins a capture, or ends the one that is running.
    Q_INVOKABLE void toggleCapture();
    Q_INVOKABLE void stopCapture();

Q_SIGNALS:
    void changed();

private:
    void captureChanged();
    void store(const CapturedHotkey& captured);
    void setRefused(bool refused);

    MainLoop& m_loop;
    AppSettings& m_settings;
    const PermissionManager& m_perms;
    HotkeyMonitor& m_monitor;
    HotkeyRecorder m_recorder;
    bool m_isRefused = false; // the keyboard, at the last attempt
    Timer m_patience;         // with a capture that nobody ends
    Timer m_resumption;       // of the monitor
};

} // namespace velmora
