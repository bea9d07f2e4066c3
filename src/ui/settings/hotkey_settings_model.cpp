#include "ui/settings/hotkey_settings_model.h"

#include "core/app_settings.h"
#include "core/hotkey_label.h"
#include "core/hotkey_monitor.h"
#include "core/permission_manager.h"
#include "ui/kit/v_choice.h"

#include <array>

namespace velmora {
namespace {

// A screen can't be locked while the keyboard is taken, so a forgotten capture ends by itself.
constexpr auto capturePatience = std::chrono::seconds(30);
// The monitor hears of keys by a way of its own: what was captured has reached it by then, and counts for
// nothing.
constexpr auto resumptionPause = std::chrono::milliseconds(100);

constexpr std::array quickHotkeys{QLatin1String("fn"), QLatin1String("ralt"), QLatin1String("rcmd")};
constexpr QLatin1String custom("custom");

} // namespace

HotkeySettingsModel::HotkeySettingsModel(const SettingsNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_loop(neighbours.loop)
    , m_settings(neighbours.settings)
    , m_perms(neighbours.perms)
    , m_monitor(neighbours.hotkey)
    , m_recorder(neighbours.keys) {
    for (const auto changes : hotkeyLabelChanges)
        connect(&m_settings, changes, this, &HotkeySettingsModel::changed);
    connect(&m_recorder, &HotkeyRecorder::needsModifierHintChanged, this, &HotkeySettingsModel::changed);
    connect(&m_recorder, &HotkeyRecorder::isRecordingChanged, this, &HotkeySettingsModel::captureChanged);
}

HotkeySettingsModel::~HotkeySettingsModel() {
    m_recorder.stop();
    m_monitor.setSuspended(false);
}

void HotkeySettingsModel::captureChanged() {
    if (m_recorder.isRecording()) {
        m_resumption.invalidate();
        m_monitor.setSuspended(true);
        m_patience = m_loop.after(capturePatience, [this] { stopCapture(); });
    } else {
        m_patience.invalidate();
        m_resumption = m_loop.after(resumptionPause, [this] { m_monitor.setSuspended(false); });
    }
    Q_EMIT changed();
}

QString HotkeySettingsModel::label() const {
    return isCapturing() ? QStringLiteral("…") : hotkeyLabel(m_settings);
}

QString HotkeySettingsModel::hint() const {
    if (m_recorder.needsModifierHint())
        return QStringLiteral("Добавьте модификатор (напр. ⌘) к букве или цифре…");
    if (isCapturing())
        return QStringLiteral("нажмите клавишу или сочетание, напр. ⌘P…");
    if (m_isRefused && !m_perms.inputMonitoringGranted())
        return QStringLiteral("В этом сеансе клавиши не видны, см. «Разрешения».");
    if (m_isRefused)
        return QStringLiteral("Клавиатуру сейчас держит другая программа. Попробуйте ещё раз.");
    return QStringLiteral("удерживайте, говорите, отпустите");
}

bool HotkeySettingsModel::hintWarns() const {
    return m_recorder.needsModifierHint() || (m_isRefused && !isCapturing());
}

QString HotkeySettingsModel::note() const {
    return isCapturing() ? QString() : fnStandInNote(m_settings);
}

QString HotkeySettingsModel::captureTitle() const {
    return isCapturing() ? QStringLiteral("Отмена") : QStringLiteral("Изменить");
}

QVariantList HotkeySettingsModel::quickChoices() const {
    QVariantList choices;
    for (const QLatin1String hotkey : quickHotkeys)
        choices.append(VChoice::option(hotkey, hotkeyName(hotkey)));
    return choices;
}

QString HotkeySettingsModel::chosen() const {
    QString hotkey = m_settings.hotkey();
    if (hotkey == custom || std::ranges::find(quickHotkeys, hotkey) != quickHotkeys.end())
        return hotkey;
    return quickHotkeys.front();
}

void HotkeySettingsModel::choose(const QString& hotkey) {
    stopCapture();
    m_settings.setHotkey(hotkey);
}

bool HotkeySettingsModel::isFn() const {
    return hotkeyIsFn(m_settings);
}

QVariantList HotkeySettingsModel::fnKeys() const {
    QVariantList keys;
    for (const auto& [key, name] : fnStandInNames)
        keys.append(VChoice::option(name, fnStandInKeyName(key)));
    return keys;
}

QString HotkeySettingsModel::fnKey() const {
    const FnStandIn playing = fnStandInFromName(m_settings.fnStandIn());
    for (const auto& [key, name] : fnStandInNames) {
        if (key == playing)
            return name;
    }
    Q_UNREACHABLE();
}

void HotkeySettingsModel::setFnKey(const QString& name) {
    m_settings.setFnStandIn(name);
}

void HotkeySettingsModel::toggleCapture() {
    if (isCapturing())
        return stopCapture();
    m_recorder.start([this](const CapturedHotkey& captured) { store(captured); });
    const bool refused = !m_recorder.seesKeyboard();
    if (refused)
        m_recorder.stop();
    setRefused(refused);
}

void HotkeySettingsModel::stopCapture() {
    m_recorder.stop();
    setRefused(false);
}

void HotkeySettingsModel::store(const CapturedHotkey& captured) {
    m_settings.setHotkeyCustomMask(static_cast<qint64>(captured.mask));
    m_settings.setHotkeyCustomKeyCode(captured.keyCode);
    m_settings.setHotkeyCustomLabel(captured.label);
    m_settings.setHotkey(custom);
}

void HotkeySettingsModel::setRefused(bool refused) {
    if (std::exchange(m_isRefused, refused) != refused)
        Q_EMIT changed();
}

} // namespace velmora
