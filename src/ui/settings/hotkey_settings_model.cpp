#include "ui/settings/hotkey_settings_model.h"

#include "core/app_settings.h"
#include "core/hotkey_label.h"
#include "core/hotkey_monitor.h"

#include <array>

namespace velmora {
namespace {

constexpr std::array quickHotkeys{QLatin1String("fn"), QLatin1String("ralt"), QLatin1String("rcmd")};
constexpr QLatin1String custom("custom");

QVariantMap option(const QString& value, const QString& title) {
    return {{QStringLiteral("value"), value}, {QStringLiteral("title"), title}};
}

} // namespace

HotkeySettingsModel::HotkeySettingsModel(AppSettings& settings, HotkeyMonitor& monitor,
                                         KeyEventMonitors& keys, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_monitor(monitor)
    , m_recorder(keys) {
    for (const auto changes : {&AppSettings::hotkeyChanged, &AppSettings::hotkeyCustomLabelChanged,
                               &AppSettings::fnStandInChanged})
        connect(&settings, changes, this, &HotkeySettingsModel::changed);
    connect(&m_recorder, &HotkeyRecorder::needsModifierHintChanged, this, &HotkeySettingsModel::changed);
    connect(&m_recorder, &HotkeyRecorder::isRecordingChanged, this, [this] {
        m_monitor.setSuspended(m_recorder.isRecording());
        Q_EMIT changed();
    });
}

HotkeySettingsModel::~HotkeySettingsModel() {
    m_recorder.stop(); // which lets the monitor hear again
}

QString HotkeySettingsModel::label() const {
    return isCapturing() ? QStringLiteral("…") : hotkeyLabel(m_settings);
}

QString HotkeySettingsModel::hint() const {
    if (m_recorder.needsModifierHint())
        return QStringLiteral("Добавьте модификатор (напр. ⌘) к букве или цифре…");
    if (isCapturing())
        return QStringLiteral("нажмите клавишу или сочетание, напр. ⌘P…");
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
        choices.append(option(hotkey, hotkeyName(hotkey)));
    return choices;
}

QString HotkeySettingsModel::chosen() const {
    const QString hotkey = m_settings.hotkey();
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
        keys.append(option(name, fnStandInKeyName(key)));
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
