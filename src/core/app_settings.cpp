#include "core/app_settings.h"

#include <QMetaMethod>
#include <QMetaProperty>

namespace velmora {

AppSettings::AppSettings(UserDefaults& defaults, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults) {
    connect(&m_defaults, &UserDefaults::changed, this, &AppSettings::announce);
}

double AppSettings::minDuration() const {
    return m_defaults.real(QStringLiteral("minDuration")).value_or(0.4);
}

void AppSettings::setMinDuration(double value) {
    m_defaults.set(QStringLiteral("minDuration"), value);
}

QString AppSettings::mode() const {
    return m_defaults.string(QStringLiteral("mode")).value_or(QStringLiteral("push-to-talk"));
}

void AppSettings::setMode(const QString& value) {
    m_defaults.set(QStringLiteral("mode"), value);
}

QString AppSettings::hotkey() const {
    return m_defaults.string(QStringLiteral("hotkey")).value_or(QStringLiteral("fn"));
}

void AppSettings::setHotkey(const QString& value) {
    m_defaults.set(QStringLiteral("hotkey"), value);
}

qint64 AppSettings::hotkeyCustomMask() const {
    return m_defaults.integer(QStringLiteral("hotkeyCustomMask")).value_or(0);
}

void AppSettings::setHotkeyCustomMask(qint64 value) {
    m_defaults.set(QStringLiteral("hotkeyCustomMask"), value);
}

qint64 AppSettings::hotkeyCustomKeyCode() const {
    return m_defaults.integer(QStringLiteral("hotkeyCustomKeyCode")).value_or(-1);
}

void AppSettings::setHotkeyCustomKeyCode(qint64 value) {
    m_defaults.set(QStringLiteral("hotkeyCustomKeyCode"), value);
}

QString AppSettings::hotkeyCustomLabel() const {
    return m_defaults.string(QStringLiteral("hotkeyCustomLabel")).value_or(QString());
}

void AppSettings::setHotkeyCustomLabel(const QString& value) {
    m_defaults.set(QStringLiteral("hotkeyCustomLabel"), value);
}

QString AppSettings::fnStandIn() const {
    return m_defaults.string(QStringLiteral("fnStandIn")).value_or(QStringLiteral("rctrl"));
}

void AppSettings::setFnStandIn(const QString& value) {
    m_defaults.set(QStringLiteral("fnStandIn"), value);
}

QString AppSettings::micUniqueID() const {
    return m_defaults.string(QStringLiteral("micUniqueID")).value_or(QString());
}

void AppSettings::setMicUniqueID(const QString& value) {
    m_defaults.set(QStringLiteral("micUniqueID"), value);
}

bool AppSettings::launchAtLogin() const {
    return m_defaults.boolean(QStringLiteral("launchAtLogin")).value_or(false);
}

void AppSettings::setLaunchAtLogin(bool value) {
    m_defaults.set(QStringLiteral("launchAtLogin"), value);
}

bool AppSettings::showHUD() const {
    return m_defaults.boolean(QStringLiteral("showHUD")).value_or(true);
}

void AppSettings::setShowHUD(bool value) {
    m_defaults.set(QStringLiteral("showHUD"), value);
}

QString AppSettings::hudSize() const {
    return m_defaults.string(QStringLiteral("hudSize")).value_or(QStringLiteral("small"));
}

void AppSettings::setHudSize(const QString& value) {
    m_defaults.set(QStringLiteral("hudSize"), value);
}

QString AppSettings::hudStyle() const {
    return m_defaults.string(QStringLiteral("hudStyle")).value_or(QStringLiteral("bars"));
}

void AppSettings::setHudStyle(const QString& value) {
    m_defaults.set(QStringLiteral("hudStyle"), value);
}

QString AppSettings::hudPosition() const {
    return m_defaults.string(QStringLiteral("hudPosition")).value_or(QStringLiteral("bottom"));
}

void AppSettings::setHudPosition(const QString& value) {
    m_defaults.set(QStringLiteral("hudPosition"), value);
}

bool AppSettings::hudMinimal() const {
    return m_defaults.boolean(QStringLiteral("hudMinimal")).value_or(true);
}

void AppSettings::setHudMinimal(bool value) {
    m_defaults.set(QStringLiteral("hudMinimal"), value);
}

QString AppSettings::readySound() const {
    return m_defaults.string(QStringLiteral("readySound")).value_or(QStringLiteral("Тихий"));
}

void AppSettings::setReadySound(const QString& value) {
    m_defaults.set(QStringLiteral("readySound"), value);
}

bool AppSettings::hasOnboarded() const {
    return m_defaults.boolean(QStringLiteral("hasOnboarded")).value_or(false);
}

void AppSettings::setHasOnboarded(bool value) {
    m_defaults.set(QStringLiteral("hasOnboarded"), value);
}

QString AppSettings::themeColor() const {
    return m_defaults.string(QStringLiteral("themeColor")).value_or(QStringLiteral("lime"));
}

void AppSettings::setThemeColor(const QString& value) {
    m_defaults.set(QStringLiteral("themeColor"), value);
}

bool AppSettings::useStreamingDictation() const {
    return m_defaults.boolean(QStringLiteral("useStreamingDictation")).value_or(false);
}

void AppSettings::setUseStreamingDictation(bool value) {
    m_defaults.set(QStringLiteral("useStreamingDictation"), value);
}

bool AppSettings::meetingConsentAccepted() const {
    return m_defaults.boolean(QStringLiteral("meetingConsentAccepted")).value_or(false);
}

void AppSettings::setMeetingConsentAccepted(bool value) {
    m_defaults.set(QStringLiteral("meetingConsentAccepted"), value);
}

double AppSettings::meetingConsentAcceptedAtTs() const {
    return m_defaults.real(QStringLiteral("meetingConsentAcceptedAtTs")).value_or(0);
}

void AppSettings::setMeetingConsentAcceptedAtTs(double value) {
    m_defaults.set(QStringLiteral("meetingConsentAcceptedAtTs"), value);
}

qint64 AppSettings::meetingAudioRetentionDays() const {
    return m_defaults.integer(QStringLiteral("meetingAudioRetentionDays")).value_or(7);
}

void AppSettings::setMeetingAudioRetentionDays(qint64 value) {
    m_defaults.set(QStringLiteral("meetingAudioRetentionDays"), value);
}

bool AppSettings::pendingMeetingStart() const {
    return m_defaults.boolean(QStringLiteral("pendingMeetingStart")).value_or(false);
}

void AppSettings::setPendingMeetingStart(bool value) {
    m_defaults.set(QStringLiteral("pendingMeetingStart"), value);
}

bool AppSettings::callDetectionEnabled() const {
    return m_defaults.boolean(QStringLiteral("callDetectionEnabled")).value_or(true);
}

void AppSettings::setCallDetectionEnabled(bool value) {
    m_defaults.set(QStringLiteral("callDetectionEnabled"), value);
}

QString AppSettings::callDetectionMutedAppsRaw() const {
    return m_defaults.string(QStringLiteral("callDetectionMutedAppsRaw")).value_or(QString());
}

void AppSettings::setCallDetectionMutedAppsRaw(const QString& value) {
    m_defaults.set(QStringLiteral("callDetectionMutedAppsRaw"), value);
}

std::optional<Date> AppSettings::meetingConsentAcceptedAt() const {
    const double seconds = meetingConsentAcceptedAtTs();
    return seconds == 0 ? std::nullopt : std::optional(fromUnixSeconds(seconds));
}

void AppSettings::setMeetingConsentAcceptedAt(std::optional<Date> date) {
    setMeetingConsentAcceptedAtTs(date ? toUnixSeconds(*date) : 0);
}

QSet<QString> AppSettings::callDetectionMutedApps() const {
    QSet<QString> names;
    for (const QString& part : callDetectionMutedAppsRaw().split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (const QString name = part.trimmed(); !name.isEmpty())
            names.insert(name);
    }
    return names;
}

void AppSettings::muteCallDetection(const QString& appName) {
    QSet<QString> names = callDetectionMutedApps();
    names.insert(appName);
    QStringList sorted(names.cbegin(), names.cend());
    sorted.sort();
    setCallDetectionMutedAppsRaw(sorted.join(QLatin1Char(',')));
}

void AppSettings::announce(const QString& key) {
    const int index = staticMetaObject.indexOfProperty(key.toUtf8().constData());
    if (index >= staticMetaObject.propertyOffset())
        staticMetaObject.property(index).notifySignal().invoke(this);
}

} // namespace velmora
