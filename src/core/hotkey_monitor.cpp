#include "core/hotkey_monitor.h"

#include "core/key_code_names.h"
#include "foundation/log.h"
#include "platform/modifier_flags.h"

#include <QPointer>

namespace velmora {
namespace {

bool hasAll(quint64 flags, quint64 mask) {
    return (flags & mask) == mask;
}

} // namespace

HotkeyMonitor::HotkeyMonitor(MainLoop& loop, const UserDefaults& defaults, EventTapFactory& taps,
                             QObject* parent)
    : QObject(parent)
    , m_loop(loop)
    , m_defaults(defaults)
    , m_taps(taps) {
    connect(&m_defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key.startsWith(QLatin1String("hotkey")) || key == QLatin1String("fnStandIn"))
            applySettings();
    });
}

void HotkeyMonitor::start() {
    if (m_tap)
        return;
    if (!m_hasFailed)
        log(QStringLiteral("[Velmora] HotkeyMonitor.start: attempting CGEvent tap creation"));
    const auto callback = [this](const KeyEvent& event) { return handle(event); };
    m_tap = m_taps.createTap(EventTapMode::Active, callback);
    if (!m_tap)
        m_tap = m_taps.createTap(EventTapMode::ListenOnly, callback);
    if (!m_tap) {
        if (!std::exchange(m_hasFailed, true))
            log(QStringLiteral(
                "[Velmora] CGEvent tap failed — Input Monitoring/Accessibility permission missing?"));
        setActive(false);
        return;
    }
    m_hasFailed = false;
    m_tap->setEnabled(true);
    applySettings();
    setActive(true);
    log(QStringLiteral("[Velmora] HotkeyMonitor.start: tap active"));
}

void HotkeyMonitor::ensureEnabled() {
    if (!m_tap) {
        start();
        return;
    }
    if (m_tap->isEnabled())
        return;
    m_tap->setEnabled(true);
    const bool enabled = m_tap->isEnabled();
    setActive(enabled);
    if (enabled)
        log(QStringLiteral("[Velmora] HotkeyMonitor.ensureEnabled: re-enabled disabled tap"));
}

void HotkeyMonitor::setSuspended(bool suspended) {
    if (suspended == m_isSuspended)
        return;
    m_isSuspended = suspended;
    if (suspended) {
        m_leftOverKeyCode = std::exchange(m_activeChordKeyCode, -1);
        m_heldMask = 0;
        queue(&HotkeyMonitor::releaseStep);
    } else {
        m_leftOverFlags = m_flags;
    }
    applySettings();
}

HotkeyMonitor::Binding HotkeyMonitor::currentBinding() const {
    if (m_isSuspended)
        return {};
    const QString hotkey = m_defaults.string(QStringLiteral("hotkey")).value_or(QStringLiteral("fn"));
    if (hotkey == QLatin1String("ralt"))
        return {-1, modifier::rightOption};
    if (hotkey == QLatin1String("rcmd"))
        return {-1, modifier::rightCommand};
    if (hotkey != QLatin1String("custom"))
        return {-1, modifier::fn};
    const qint64 mask = m_defaults.integer(QStringLiteral("hotkeyCustomMask")).value_or(0);
    if (mask < 0)
        qFatal("hotkeyCustomMask is negative: %lld", static_cast<long long>(mask));
    const qint64 keyCode = m_defaults.integer(QStringLiteral("hotkeyCustomKeyCode")).value_or(-1);
    return {static_cast<int>(keyCode), static_cast<quint64>(mask)};
}

// Desktops that need to know ahead which keys will be swallowed, and which key plays Fn, learn it here.
void HotkeyMonitor::applySettings() {
    if (!m_tap)
        return;
    m_tap->setFnStandIn(
        fnStandInFromName(m_defaults.string(QStringLiteral("fnStandIn")).value_or(QString())));
    const Binding binding = currentBinding();
    const bool isHotkey = binding.mask != 0 || KeyCodeNames::isFunctionKey(binding.keyCode);
    m_tap->claimChord(isHotkey ? std::optional(KeyChord{binding.keyCode, binding.mask}) : std::nullopt);
}

void HotkeyMonitor::noteLeftOvers(const KeyEvent& event) {
    if (event.kind == KeyEvent::Kind::FlagsChanged) {
        m_flags = event.flags;
        m_leftOverFlags &= m_flags;
    } else if (event.kind == KeyEvent::Kind::KeyDown && m_isSuspended) {
        m_leftOverKeyCode = event.keyCode;
    } else if (event.kind == KeyEvent::Kind::KeyUp && event.keyCode == m_leftOverKeyCode) {
        m_leftOverKeyCode = -1;
    }
}

EventVerdict HotkeyMonitor::handle(const KeyEvent& event) {
    noteLeftOvers(event);
    switch (event.kind) {
    case KeyEvent::Kind::TapDisabledByTimeout:
    case KeyEvent::Kind::TapDisabledByUserInput:
        if (m_tap)
            m_tap->setEnabled(true);
        return EventVerdict::Pass;
    case KeyEvent::Kind::KeyDown:
        return handleKeyDown(event);
    case KeyEvent::Kind::KeyUp:
        return handleKeyUp(event);
    case KeyEvent::Kind::FlagsChanged:
        return handleFlagsChanged(event);
    case KeyEvent::Kind::Other:
        break;
    }
    return EventVerdict::Pass;
}

EventVerdict HotkeyMonitor::handleKeyDown(const KeyEvent& event) {
    const Binding binding = currentBinding();
    if (binding.keyCode < 0)
        return EventVerdict::Pass;
    if (event.keyCode == m_activeChordKeyCode)
        return EventVerdict::Swallow; // auto-repeat of the held chord
    if (event.keyCode != binding.keyCode || event.keyCode == m_leftOverKeyCode)
        return EventVerdict::Pass;
    // A plain letter never acts as the hotkey, whatever the stored values say.
    if (binding.mask == 0 && !KeyCodeNames::isFunctionKey(event.keyCode))
        return EventVerdict::Pass;
    if (!hasAll(event.flags & modifier::genericBits, binding.mask))
        return EventVerdict::Pass;
    m_activeChordKeyCode = event.keyCode;
    queue(&HotkeyMonitor::pressStep);
    return EventVerdict::Swallow;
}

EventVerdict HotkeyMonitor::handleKeyUp(const KeyEvent& event) {
    if (m_activeChordKeyCode < 0 || event.keyCode != m_activeChordKeyCode)
        return EventVerdict::Pass;
    m_activeChordKeyCode = -1;
    queue(&HotkeyMonitor::releaseStep);
    return EventVerdict::Swallow;
}

EventVerdict HotkeyMonitor::handleFlagsChanged(const KeyEvent& event) {
    const Binding binding = currentBinding();
    if (binding.keyCode < 0 || m_heldMask != 0) {
        // Modifiers that are held as the hotkey remain it until they are let go, whatever was set meanwhile.
        const quint64 mask = m_heldMask != 0 ? m_heldMask : binding.mask;
        const bool held = mask != 0 && hasAll(event.flags & ~m_leftOverFlags, mask);
        m_heldMask = held ? mask : 0;
        queue(held ? &HotkeyMonitor::pressStep : &HotkeyMonitor::releaseStep);
    } else if (m_activeChordKeyCode >= 0 && !hasAll(event.flags, binding.mask)) {
        // The chord's key is still down; its key-up will be swallowed and find nothing more to release.
        queue(&HotkeyMonitor::releaseStep);
    }
    return EventVerdict::Pass;
}

void HotkeyMonitor::queue(void (HotkeyMonitor::*step)()) {
    m_loop.post([self = QPointer(this), step] {
        if (self)
            (self->*step)();
    });
}

void HotkeyMonitor::pressStep() {
    if (m_isDown)
        return;
    m_isDown = true;
    Q_EMIT isHotkeyDownChanged();
    onPress();
}

void HotkeyMonitor::releaseStep() {
    if (!m_isDown)
        return;
    m_isDown = false;
    Q_EMIT isHotkeyDownChanged();
    onRelease();
}

void HotkeyMonitor::setActive(bool active) {
    m_loop.post([self = QPointer(this), active] {
        if (!self || self->m_isActive == active)
            return;
        self->m_isActive = active;
        Q_EMIT self->isActiveChanged();
    });
}

} // namespace velmora
