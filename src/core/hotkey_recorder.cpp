#include "core/hotkey_recorder.h"

#include "core/key_code_names.h"
#include "platform/modifier_flags.h"

#include <QStringList>

#include <array>

namespace velmora {
namespace {

constexpr int escapeKeyCode = 53;

struct Name {
    quint64 bit;
    const char16_t* text;
};

constexpr std::array deviceNames{
    Name{modifier::fn, u"Fn"},
    Name{modifier::rightOption, u"Right ⌥"},
    Name{modifier::leftOption, u"Left ⌥"},
    Name{modifier::rightCommand, u"Right ⌘"},
    Name{modifier::leftCommand, u"Left ⌘"},
    Name{modifier::rightShift, u"Right ⇧"},
    Name{modifier::leftShift, u"Left ⇧"},
    Name{modifier::rightControl, u"Right ⌃"},
    Name{modifier::leftControl, u"Left ⌃"},
    Name{modifier::capsLock, u"⇪"},
};

constexpr std::array genericNames{
    Name{modifier::fn, u"Fn"},   Name{modifier::control, u"⌃"}, Name{modifier::option, u"⌥"},
    Name{modifier::shift, u"⇧"}, Name{modifier::command, u"⌘"},
};

template<std::size_t count>
QStringList namesIn(quint64 mask, const std::array<Name, count>& names) {
    QStringList found;
    for (const Name& name : names) {
        if ((mask & name.bit) != 0)
            found.append(QString::fromUtf16(name.text));
    }
    return found;
}

constexpr quint64 deviceBits = [] {
    quint64 bits = 0;
    for (const Name& name : deviceNames)
        bits |= name.bit;
    return bits;
}();
static_assert(deviceBits == 0x81207F);

} // namespace

HotkeyRecorder::HotkeyRecorder(KeyEventMonitors& monitors, QObject* parent)
    : QObject(parent)
    , m_monitors(monitors) {}

HotkeyRecorder::~HotkeyRecorder() = default;

void HotkeyRecorder::start(Captured onCaptured) {
    if (m_isRecording)
        return;
    m_onCaptured = std::move(onCaptured);
    setCapturedLabel({});
    setNeedsModifierHint(false);
    m_peakDeviceMask = 0;
    m_sawKeyDown = false;
    setRecording(true);
    m_flagsMonitor = m_monitors.addMonitor(KeyEvent::Kind::FlagsChanged,
                                           [this](const KeyEvent& event) { handleFlags(event); });
    m_keyMonitor = m_monitors.addMonitor(KeyEvent::Kind::KeyDown,
                                         [this](const KeyEvent& event) { handleKeyDown(event); });
}

void HotkeyRecorder::stop() {
    m_flagsMonitor.reset();
    m_keyMonitor.reset();
    setRecording(false);
    setNeedsModifierHint(false);
}

void HotkeyRecorder::handleFlags(const KeyEvent& event) {
    const quint64 held = event.flags & deviceBits;
    m_peakDeviceMask |= held;
    if (held != 0)
        return;
    const quint64 peak = std::exchange(m_peakDeviceMask, 0);
    if (!std::exchange(m_sawKeyDown, false) && peak != 0)
        capture({-1, peak, modifierLabelForDeviceMask(peak)});
}

void HotkeyRecorder::handleKeyDown(const KeyEvent& event) {
    if (event.repeat)
        return;
    if (event.keyCode == escapeKeyCode) {
        stop();
        return;
    }
    m_sawKeyDown = true;
    const quint64 mask = event.flags & modifier::genericBits;
    if (mask == 0 && !KeyCodeNames::isFunctionKey(event.keyCode)) {
        setNeedsModifierHint(true);
        return;
    }
    const QString key = KeyCodeNames::label(event.keyCode);
    const QString label = mask == 0 ? key : modifierLabelForGenericMask(mask) + QLatin1Char(' ') + key;
    capture({event.keyCode, mask, label});
}

void HotkeyRecorder::capture(const CapturedHotkey& captured) {
    setCapturedLabel(captured.label);
    stop();
    if (const Captured onCaptured = std::exchange(m_onCaptured, nullptr))
        onCaptured(captured);
}

QString HotkeyRecorder::modifierLabelForDeviceMask(quint64 mask) {
    const QStringList names = namesIn(mask, deviceNames);
    return names.isEmpty() ? QStringLiteral("0x") + QString::number(mask, 16)
                           : names.join(QStringLiteral(" + "));
}

QString HotkeyRecorder::modifierLabelForGenericMask(quint64 mask) {
    return namesIn(mask, genericNames).join(QString());
}

void HotkeyRecorder::setRecording(bool recording) {
    if (recording == m_isRecording)
        return;
    m_isRecording = recording;
    Q_EMIT isRecordingChanged();
}

void HotkeyRecorder::setCapturedLabel(const QString& label) {
    if (label == m_capturedLabel)
        return;
    m_capturedLabel = label;
    Q_EMIT capturedLabelChanged();
}

void HotkeyRecorder::setNeedsModifierHint(bool needed) {
    if (needed == m_needsModifierHint)
        return;
    m_needsModifierHint = needed;
    Q_EMIT needsModifierHintChanged();
}

} // namespace velmora
