#pragma once

#include "foundation/main_loop.h"
#include "foundation/user_defaults.h"
#include "platform/event_tap.h"

#include <QObject>

namespace velmora {

/// Watches the session's keyboard for the dictation hotkey. What counts as the hotkey is read from the user
/// defaults at every event, so a change works with the next key.
class HotkeyMonitor : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isActive READ isActive NOTIFY isActiveChanged)
    Q_PROPERTY(bool isHotkeyDown READ isHotkeyDown NOTIFY isHotkeyDownChanged)

public:
    using Report = std::function<void()>;

    HotkeyMonitor(MainLoop& loop, const UserDefaults& defaults, EventTapFactory& taps,
                  QObject* parent = nullptr);

    Report onPress = [] {};
    Report onRelease = [] {};

    /// The tap exists and works.
    [[nodiscard]] bool isActive() const { return m_isActive; }
    [[nodiscard]] bool isHotkeyDown() const { return m_isDown; }

    /// Creates the tap; a session that allows none is logged once and tried again by ensureEnabled().
    void start();
    /// Brings a disabled tap back, or starts.
    void ensureEnabled();
    /// While the user chooses another hotkey, no key is one: a hotkey that is down counts as released, and a
    /// chord's keys go to whoever asks for them. What is down at the end has to be released before it counts.
    void setSuspended(bool suspended);

Q_SIGNALS:
    void isActiveChanged();
    void isHotkeyDownChanged();

private:
    /// A negative key code means the modifiers alone.
    struct Binding {
        int keyCode = -1;
        quint64 mask = 0;
    };

    [[nodiscard]] Binding currentBinding() const;
    void applySettings();
    EventVerdict handle(const KeyEvent& event);
    void noteLeftOvers(const KeyEvent& event);
    EventVerdict handleKeyDown(const KeyEvent& event);
    EventVerdict handleKeyUp(const KeyEvent& event);
    EventVerdict handleFlagsChanged(const KeyEvent& event);
    void queue(void (HotkeyMonitor::*step)());
    void pressStep();
    void releaseStep();
    void setActive(bool active);

    MainLoop& m_loop;
    const UserDefaults& m_defaults;
    EventTapFactory& m_taps;
    std::unique_ptr<EventTap> m_tap;
    bool m_hasFailed = false; // to make the tap, and has said so
    bool m_isActive = false;
    bool m_isSuspended = false;
    bool m_isDown = false; // guards against double reports
    int m_activeChordKeyCode = -1;
    quint64 m_heldMask = 0; // of the modifiers that are held as the hotkey
    quint64 m_flags = 0;
    quint64 m_leftOverFlags = 0; // held since a suspension, as the key
    int m_leftOverKeyCode = -1;
};

} // namespace velmora
