#include "ui/onboarding/onboarding_model.h"

#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "backend/backend_url.h"
#include "backend/sign_in.h"
#include "core/app_settings.h"
#include "foundation/main_loop.h"

namespace velmora {
namespace {

bool isBlank(const QString& text) {
    return text.trimmed().isEmpty();
}

} // namespace

const QString OnboardingModel::storedStepKey = QStringLiteral("onboardingStep");

OnboardingModel::OnboardingModel(const OnboardingNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_defaults(neighbours.defaults)
    , m_settings(neighbours.settings)
    , m_perms(neighbours.perms)
    , m_authStore(neighbours.authStore)
    , m_authSession(neighbours.authSession)
    , m_signIn(neighbours.signIn)
    , m_loop(neighbours.loop)
    , m_backendHost(QUrl(backendURLText(neighbours.info)).host())
    , m_permissions(m_perms)
    , m_tutorial(neighbours.settings, neighbours.pipeline, neighbours.startTestRecording) {
    connect(this, &OnboardingModel::stepChanged, this, &OnboardingModel::canContinueChanged);
    connect(this, &OnboardingModel::accountChanged, this, &OnboardingModel::canContinueChanged);
    connect(this, &OnboardingModel::tutorialTextChanged, this, &OnboardingModel::canContinueChanged);
    connect(this, &OnboardingModel::stepChanged, &m_tutorial, &TutorialModel::forgetProblem);
    connect(&m_authStore, &AuthStore::isLoggedInChanged, this, &OnboardingModel::signInChanged);
    connect(&m_authSession, &AuthSession::userChanged, this, &OnboardingModel::accountChanged);
    const qint64 stored = m_defaults.integer(storedStepKey).value_or(Welcome);
    if (stored >= Welcome && stored <= totalSteps())
        m_step = static_cast<Step>(stored);
    else
        storeStep();
    correctStep();
}

QString OnboardingModel::caption() const {
    return QStringLiteral("ШАГ %1 ИЗ %2").arg(m_step).arg(totalSteps());
}

bool OnboardingModel::canContinue() const {
    return obstacle().isEmpty();
}

QString OnboardingModel::obstacle() const {
    const bool needsSignIn = m_step == Auth && !isLoggedIn();
    const bool needsText = (m_step == TutorialDictation && isBlank(m_tutorial1Text)) ||
                           (m_step == TutorialHotkey && isBlank(m_tutorial2Text));
    if (needsSignIn)
        return QStringLiteral("Недоступно: сначала войди в аккаунт");
    return needsText ? QStringLiteral("Недоступно: сначала продиктуй что-нибудь") : QString();
}

bool OnboardingModel::isLoggedIn() const {
    return m_authStore.isLoggedIn();
}

QString OnboardingModel::account() const {
    // The session keeps its user when it expires.
    return isLoggedIn() && m_authSession.user() ? m_authSession.user()->email : QString();
}

QString OnboardingModel::privacy() const {
    return QStringLiteral("Аудио уходит только на %1, это наш сервер; запись и распознанный текст больше "
                          "никому не передаются.")
        .arg(m_backendHost);
}

void OnboardingModel::setTutorial1Text(const QString& text) {
    if (std::exchange(m_tutorial1Text, text) != text)
        Q_EMIT tutorialTextChanged();
}

void OnboardingModel::setTutorial2Text(const QString& text) {
    if (std::exchange(m_tutorial2Text, text) != text)
        Q_EMIT tutorialTextChanged();
}

void OnboardingModel::setOnScreen(bool onScreen) {
    if (std::exchange(m_onScreen, onScreen) != onScreen)
        Q_EMIT onScreenChanged();
}

void OnboardingModel::refresh() {
    m_perms.refresh();
    if (!m_authSession.user())
        m_accountRefresh.start();
    correctStep();
}

void OnboardingModel::back() {
    if (canGoBack())
        setStep(m_step - 1);
}

void OnboardingModel::proceed() {
    if (!canContinue())
        return;
    if (m_step < totalSteps()) {
        setStep(m_step + 1);
        return;
    }
    m_settings.setHasOnboarded(true);
    onClose();
}

void OnboardingModel::openLoginURL() {
    const bool opened = m_signIn.openLoginURL();
    m_loginOpenedAt = opened ? std::optional(m_loop.date()) : std::nullopt;
    m_loginProblem = opened ? QString() : QStringLiteral("Не удалось открыть браузер.");
    Q_EMIT loginChanged();
}

void OnboardingModel::setStep(int step) {
    if (step == m_step)
        return;
    m_step = static_cast<Step>(step);
    storeStep();
    Q_EMIT stepChanged();
}

void OnboardingModel::storeStep() {
    m_defaults.set(storedStepKey, static_cast<qint64>(m_step));
}

// What lies behind the sign-in is for those who are signed in.
void OnboardingModel::correctStep() {
    if (m_step > Auth && !isLoggedIn())
        setStep(Auth);
}

void OnboardingModel::signInChanged() {
    m_loginOpenedAt.reset();
    m_loginProblem.clear();
    Q_EMIT loginChanged();
    Q_EMIT accountChanged();
    if (isLoggedIn() && m_step == Auth)
        setStep(Permissions);
}

} // namespace velmora
