#include "ui/settings/ai_settings_model.h"

#include "backend/auth_store.h"
#include "ui/settings/setting_labels.h"

namespace velmora {
namespace {

constexpr auto retryInterval = std::chrono::seconds(5);

} // namespace

AISettingsModel::AISettingsModel(const SettingsNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_loop(neighbours.loop)
    , m_authStore(neighbours.authStore)
    , m_authSession(neighbours.authSession)
    , m_refresh(neighbours.authSession) {
    connect(&m_authStore, &AuthStore::isLoggedInChanged, this, &AISettingsModel::changed);
    connect(&m_authSession, &AuthSession::preferencesChanged, this, &AISettingsModel::changed);
}

// The session keeps its preferences when it expires.
AISettingsModel::Page AISettingsModel::page() const {
    if (!m_authStore.isLoggedIn())
        return Page::SignedOut;
    return m_authSession.preferences() ? Page::Loaded : Page::Loading;
}

QVariantList AISettingsModel::languages() {
    return transcribeLanguageLabels.labels();
}

QString AISettingsModel::language() const {
    return transcribeLanguageLabels.label(preferences().transcribeLanguage);
}

void AISettingsModel::setLanguage(const QString& label) {
    PreferencesPatch patch;
    patch.transcribeLanguage = transcribeLanguageLabels.value(label);
    m_authSession.patchPreferences(patch);
}

void AISettingsModel::setCleanupEnabled(bool enabled) {
    PreferencesPatch patch;
    patch.cleanupEnabled = enabled;
    m_authSession.patchPreferences(patch);
}

void AISettingsModel::setDevModeEnabled(bool enabled) {
    PreferencesPatch patch;
    patch.devModeEnabled = enabled;
    m_authSession.patchPreferences(patch);
}

void AISettingsModel::setSeen(bool seen) {
    m_retry.invalidate();
    if (!seen)
        return;
    readIfMissing();
    m_retry = m_loop.every(retryInterval, [this] { readIfMissing(); });
}

void AISettingsModel::readIfMissing() {
    if (!m_authSession.preferences())
        m_refresh.start();
}

BackendPreferences AISettingsModel::preferences() const {
    return m_authSession.preferences().value_or(BackendPreferences());
}

} // namespace velmora
