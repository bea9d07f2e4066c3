#include "core/text_injector.h"
#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_paste_queue.h"
#include "support/desktop/pointer.h"
#include "support/desktop/wait_until.h"
#include "support/fake_color_scheme.h"
#include "support/onboarding_stage.h"
#include "ui/kit/ui_engine.h"
#include "ui/kit/v_theme.h"
#include "ui/onboarding/onboarding_window.h"
#include "ui/qml_engine.h"

#include <QQuickItem>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The real window, and the way in which a dictation's words come to the desktop.
class OnboardingPasteTest : public testing::Test, protected DictationOnFakes {
protected:
    void SetUp() override { ASSERT_TRUE(queue); }

    [[nodiscard]] bool openAt(OnboardingModel::Step step) {
        auth.save(QStringLiteral("access"), QStringLiteral("refresh"));
        defaults.set(OnboardingModel::storedStepKey, static_cast<qint64>(step));
        window = std::make_unique<OnboardingWindow>(engineOfViews, stage.neighbours);
        window->open();
        return waitUntil([this] { return window->isActive() && window->isExposed(); });
    }
    [[nodiscard]] OnboardingModel& model() {
        return *window->rootObject()->property("model").value<OnboardingModel*>();
    }
    /// The middle of an item, on the screen.
    [[nodiscard]] QPoint middleOf(const char* objectName) const {
        const auto* item = window->rootObject()->findChild<QQuickItem*>(QLatin1String(objectName));
        return item->mapToGlobal(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }

    QtMainLoop realLoop;
    std::unique_ptr<X11PasteQueue> queue = X11PasteQueue::open(realLoop, {});
    TextInjector realInjector{realLoop, *queue, *queue};
    AuthStore auth{folder.filePath(QStringLiteral("Velmora")), defaults};
    OnboardingStage stage{*this, auth};
    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    UiEngine engineOfViews{makeQmlEngine};
    std::unique_ptr<OnboardingWindow> window;
};

} // namespace

TEST_F(OnboardingPasteTest, DictatedText_LandsInTheFieldOfItsStep) {
    ASSERT_TRUE(openAt(OnboardingModel::TutorialDictation));
    const QString text = QStringLiteral("Привет, это первая диктовка.\nИ вторая строка.");
    realInjector.paste(text);
    EXPECT_TRUE(waitUntil([&] { return model().tutorial1Text() == text; }))
        << model().tutorial1Text().toStdString();
    EXPECT_TRUE(model().tutorial2Text().isEmpty());
    EXPECT_TRUE(model().canContinue());
}

TEST_F(OnboardingPasteTest, WordsThatStreamIn_ArriveInOrderAndNoneIsLost) {
    ASSERT_TRUE(openAt(OnboardingModel::TutorialHotkey));
    QString all;
    realInjector.startIncrementalSession();
    for (int i = 1; i <= 12; ++i) {
        const QString piece = QStringLiteral("слово%1 ").arg(i);
        all += piece;
        realInjector.pasteIncremental(piece);
    }
    realInjector.finishIncrementalSession();
    EXPECT_TRUE(waitUntil([&] { return model().tutorial2Text() == all; }))
        << model().tutorial2Text().toStdString();
}

TEST_F(OnboardingPasteTest, RecordedByTheButton_TheTextStillLandsInTheField) {
    ASSERT_TRUE(openAt(OnboardingModel::TutorialDictation));
    Pointer pointer;
    pointer.click(middleOf("fallbackButton"));
    ASSERT_TRUE(waitUntil([this] { return stage.testRecordings == 1; }));
    realInjector.paste(QStringLiteral("без клавиши"));
    EXPECT_TRUE(waitUntil([this] { return model().tutorial1Text() == QStringLiteral("без клавиши"); }));
}

TEST_F(OnboardingPasteTest, Minimised_NothingMovesUntilItIsBack) {
    ASSERT_TRUE(openAt(OnboardingModel::TutorialHotkey));
    const QObject* rings = window->rootObject()->findChild<QObject*>(QStringLiteral("animateForever"));
    ASSERT_TRUE(rings);
    EXPECT_TRUE(waitUntil([rings] { return rings->property("running").toBool(); }));
    window->showMinimized();
    EXPECT_TRUE(waitUntil([rings] { return !rings->property("running").toBool(); }));
    window->open();
    EXPECT_TRUE(waitUntil([rings] { return rings->property("running").toBool(); }));
}
