#pragma once

#include "backend/account_refresh.h"
#include "foundation/date.h"
#include "ui/onboarding/onboarding_neighbours.h"
#include "ui/onboarding/tutorial_model.h"
#include "ui/settings/permissions_model.h"

namespace velmora {

/// The way of a new user: which step it stands at, what that says, and whether it goes on from there.
class OnboardingModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")
    Q_PROPERTY(Step step READ step NOTIFY stepChanged)
    Q_PROPERTY(int totalSteps READ totalSteps CONSTANT)
    Q_PROPERTY(QString caption READ caption NOTIFY stepChanged)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY stepChanged)
    Q_PROPERTY(bool canContinue READ canContinue NOTIFY canContinueChanged)
    /// What is to be done first, for those who listen; empty when nothing is.
    Q_PROPERTY(QString obstacle READ obstacle NOTIFY canContinueChanged)
    Q_PROPERTY(bool onScreen READ isOnScreen NOTIFY onScreenChanged)

    Q_PROPERTY(bool isLoggedIn READ isLoggedIn NOTIFY accountChanged)
    /// Who is signed in; empty while that isn't known yet.
    Q_PROPERTY(QString account READ account NOTIFY accountChanged)
    Q_PROPERTY(bool awaitsBrowser READ awaitsBrowser NOTIFY loginChanged)
    /// Why there is no page to sign in on; empty unless it was tried.
    Q_PROPERTY(QString loginProblem READ loginProblem NOTIFY loginChanged)

    Q_PROPERTY(velmora::PermissionsModel* permissions READ permissions CONSTANT)
    Q_PROPERTY(QString privacy READ privacy CONSTANT)

    Q_PROPERTY(velmora::TutorialModel* tutorial READ tutorial CONSTANT)
    Q_PROPERTY(QString tutorial1Text READ tutorial1Text WRITE setTutorial1Text NOTIFY tutorialTextChanged)
    Q_PROPERTY(QString tutorial2Text READ tutorial2Text WRITE setTutorial2Text NOTIFY tutorialTextChanged)

public:
    enum Step { Welcome = 1, Auth, Permissions, TutorialDictation, TutorialHotkey };
    Q_ENUM(Step)

    /// Finds its stored step; one that isn't any, or that nobody may be at, is corrected.
    explicit OnboardingModel(const OnboardingNeighbours& neighbours, QObject* parent = nullptr);

    /// The last step is done.
    std::function<void()> onClose = [] {};

    [[nodiscard]] Step step() const { return m_step; }
    [[nodiscard]] static int totalSteps() { return TutorialHotkey; }
    [[nodiscard]] QString caption() const;
    [[nodiscard]] bool canGoBack() const { return m_step > Welcome; }
    [[nodiscard]] bool canContinue() const;
    [[nodiscard]] QString obstacle() const;
    [[nodiscard]] bool isOnScreen() const { return m_onScreen; }
    [[nodiscard]] bool isLoggedIn() const;
    [[nodiscard]] QString account() const;
    [[nodiscard]] bool awaitsBrowser() const { return m_loginOpenedAt.has_value(); }
    [[nodiscard]] std::optional<Date> loginOpenedAt() const { return m_loginOpenedAt; }
    [[nodiscard]] QString loginProblem() const { return m_loginProblem; }
    [[nodiscard]] PermissionsModel* permissions() { return &m_permissions; }
    [[nodiscard]] QString privacy() const;
    [[nodiscard]] TutorialModel* tutorial() { return &m_tutorial; }
    [[nodiscard]] QString tutorial1Text() const { return m_tutorial1Text; }
    void setTutorial1Text(const QString& text);
    [[nodiscard]] QString tutorial2Text() const { return m_tutorial2Text; }
    void setTutorial2Text(const QString& text);

    /// Whether anybody sees it: nothing moves while nobody does.
    void setOnScreen(bool onScreen);
    /// Reads again what nobody announces; when the window appears, and every now and then.
    void refresh();

    Q_INVOKABLE void back();
    /// Does nothing while it can't continue.
    Q_INVOKABLE void proceed();
    /// Opens the sign-in page in the browser.
    Q_INVOKABLE void openLoginURL();

    /// Where the step is kept between two runs.
    static const QString storedStepKey;

Q_SIGNALS:
    void stepChanged();
    void canContinueChanged();
    void onScreenChanged();
    void accountChanged();
    void loginChanged();
    void tutorialTextChanged();

private:
    void setStep(int step);
    void storeStep();
    void correctStep();
    void signInChanged();

    UserDefaults& m_defaults;
    AppSettings& m_settings;
    PermissionManager& m_perms;
    AuthStore& m_authStore;
    AuthSession& m_authSession;
    SignIn& m_signIn;
    MainLoop& m_loop;
    const QString m_backendHost;
    Step m_step = Welcome;
    bool m_onScreen = false;
    std::optional<Date> m_loginOpenedAt;
    QString m_loginProblem;
    PermissionsModel m_permissions;
    TutorialModel m_tutorial;
    QString m_tutorial1Text;
    QString m_tutorial2Text;
    AccountRefresh m_accountRefresh{m_authSession};
};

} // namespace velmora
