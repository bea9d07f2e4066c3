#include "gallery/onboarding_views.h"

#include "gallery/gallery_world.h"
#include "support/onboarding_stage.h"

#include <QQuickWindow>
#include <QTest>

namespace velmora::test {
namespace {

using Step = OnboardingModel::Step;

/// A window at one of its steps.
class OnboardingPicture final : public QObject {
public:
    OnboardingPicture(GalleryWorld& galleryWorld, Step step, bool signedIn, const QString& email)
        : QObject(galleryWorld.stage())
        , world(galleryWorld)
        , stage(galleryWorld, galleryWorld.auth) {
        stage.email = email;
        if (signedIn)
            stage.signedIn();
        world.defaults.set(OnboardingModel::storedStepKey, static_cast<qint64>(step));
        model = std::make_unique<OnboardingModel>(stage.neighbours);
        model->refresh();
        model->setOnScreen(true);
    }

    GalleryWorld& world;
    OnboardingStage stage;
    std::unique_ptr<OnboardingModel> model;
};

using Arrange = std::function<void(OnboardingPicture&)>;

GalleryView picture(
    const char* name, Step step, bool signedIn, Arrange arrange = [](OnboardingPicture&) {},
    const char* email = "anna@example.org") {
    return {.name = QStringLiteral("onboarding-") + QLatin1String(name),
            .module = "Onboarding",
            .type = "OnboardingView",
            .size = {680, 580},
            .prepare = [=](GalleryWorld& world) {
                auto* made = new OnboardingPicture(world, step, signedIn, QLatin1String(email));
                arrange(*made);
                return QVariantMap{{QStringLiteral("model"), QVariant::fromValue(made->model.get())}};
            }};
}

void grant(OnboardingPicture& made, const std::set<PrivacyRight>& rights) {
    made.stage.rights.granted = rights;
    made.stage.perms.refresh();
}

void useCustomHotkey(OnboardingPicture& made) {
    made.world.settings.setHotkey(QStringLiteral("custom"));
    made.world.settings.setHotkeyCustomLabel(QStringLiteral("⌃⌥⇧ Space"));
}

const QString dictated = QStringLiteral("Привет! Это моя первая диктовка, и слова появляются прямо здесь.");

} // namespace

std::vector<GalleryView> onboardingViews() {
    const auto refuse = [](OnboardingPicture& made) { made.world.fail(); };
    const auto record = [](OnboardingPicture& made) { made.world.record(); };
    std::vector<GalleryView> views{
        picture("1-welcome", Step::Welcome, false),
        picture("2-signed-out", Step::Auth, false),
        picture("2-waiting", Step::Auth, false, [](OnboardingPicture& made) { made.model->openLoginURL(); }),
        picture("2-signed-in", Step::Auth, true),
        picture(
            "2-signed-in-long", Step::Auth, true, [](OnboardingPicture&) {},
            "konstantin.konstantinopolsky-preobrazhensky@very-long-department.example.org"),
        picture(
            "2-signed-in-unknown", Step::Auth, true, [](OnboardingPicture&) {}, ""),
        picture("3-none", Step::Permissions, true),
        picture("3-some", Step::Permissions, true,
                [](OnboardingPicture& made) { grant(made, {PrivacyRight::Microphone}); }),
        picture("3-all", Step::Permissions, true,
                [](OnboardingPicture& made) {
                    grant(made, {PrivacyRight::Microphone, PrivacyRight::Accessibility,
                                 PrivacyRight::InputMonitoring});
                }),
        picture("4-empty", Step::TutorialDictation, true),
        picture("4-recording", Step::TutorialDictation, true, record),
        picture("4-filled", Step::TutorialDictation, true,
                [](OnboardingPicture& made) { made.model->setTutorial1Text(dictated); }),
        picture("4-long", Step::TutorialDictation, true,
                [](OnboardingPicture& made) { made.model->setTutorial1Text(dictated.repeated(14)); }),
        picture("4-error", Step::TutorialDictation, true, refuse),
        picture("4-custom", Step::TutorialDictation, true, useCustomHotkey),
        picture("5-empty", Step::TutorialHotkey, true),
        picture("5-recording", Step::TutorialHotkey, true, record),
        picture("5-filled", Step::TutorialHotkey, true,
                [](OnboardingPicture& made) { made.model->setTutorial2Text(dictated); }),
        picture("5-error", Step::TutorialHotkey, true, refuse),
        picture("5-custom", Step::TutorialHotkey, true, useCustomHotkey),
    };
    GalleryView keyboard = picture("4-keyboard", Step::TutorialDictation, true);
    keyboard.arrange = [](QQuickItem& item) { QTest::keyClick(item.window(), Qt::Key_Tab); };
    views.push_back(std::move(keyboard));
    return views;
}

} // namespace velmora::test
