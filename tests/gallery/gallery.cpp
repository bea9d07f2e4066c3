#include "gallery/gallery.h"

#include "foundation/error.h"
#include "gallery/capsule_views.h"
#include "gallery/gallery_world.h"
#include "gallery/kit_views.h"
#include "gallery/main_window_views.h"
#include "gallery/menu_bar_views.h"
#include "gallery/onboarding_views.h"
#include "gallery/recording_settings_views.h"
#include "gallery/settings_views.h"
#include "ui/qml_engine.h"

#include <QAnimationDriver>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

#include <cmath>

namespace velmora::test {
namespace {

constexpr int backdropMargin = 32;

// Animations move by hand, so that a picture is the same every time.
class AnimationsByHand final : public QAnimationDriver {
public:
    AnimationsByHand() { install(); }
    ~AnimationsByHand() override { uninstall(); }
    AnimationsByHand(const AnimationsByHand&) = delete;
    AnimationsByHand& operator=(const AnimationsByHand&) = delete;

    void advanceBy(std::chrono::milliseconds duration) {
        constexpr std::chrono::milliseconds step(20);
        for (; duration > step; duration -= step) {
            m_elapsed += step;
            advanceAnimation();
            QCoreApplication::processEvents();
        }
    }
    [[nodiscard]] qint64 elapsed() const override { return m_elapsed.count(); }

private:
    std::chrono::milliseconds m_elapsed{};
};

// Collects what is warned of while it lives.
class Complaints {
public:
    Complaints() {
        theComplaints = this;
        m_previous =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                if (type != QtDebugMsg && type != QtInfoMsg)
                    theComplaints->m_texts.append(text);
            });
    }
    ~Complaints() { qInstallMessageHandler(m_previous); }
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;

    void throwIfAny(const QString& name) const {
        if (!m_texts.isEmpty())
            throw PlainError(name + QLatin1String(": ") + m_texts.join(QLatin1Char('\n')));
    }

private:
    static inline Complaints* theComplaints = nullptr;
    QtMessageHandler m_previous;
    QStringList m_texts;
};

QUrl source(const GalleryView& view) {
    return QUrl(QStringLiteral("qrc:/qt/qml/Velmora/%1/%2.qml")
                    .arg(QLatin1String(view.module), QLatin1String(view.type)));
}

QSizeF wantedSize(const GalleryView& view, const QQuickItem& item) {
    return view.size.isEmpty() ? QSizeF(std::ceil(item.implicitWidth()), std::ceil(item.implicitHeight()))
                               : QSizeF(view.size);
}

QImage draw(const GalleryView& view, bool dark, QQuickItem& item) {
    AnimationsByHand animations;
    QQuickWindow window;
    item.setParentItem(window.contentItem());
    item.setPosition(QPointF(backdropMargin, backdropMargin));
    item.setSize(wantedSize(view, item));
    window.setColor(dark ? QColor(32, 36, 40) : QColor(238, 240, 242));
    window.resize((item.size() + QSizeF(2 * backdropMargin, 2 * backdropMargin)).toSize());
    window.show();
    window.requestActivate();
    if (!QTest::qWaitForWindowActive(&window))
        throw PlainError(view.name + QStringLiteral(": the window did not come up"));
    QTest::mouseMove(&window, QPoint(1, 1)); // away from where the last picture has left it
    animations.advanceBy(std::chrono::seconds(1));
    view.arrange(item);
    animations.advanceBy(std::chrono::seconds(1));
    return window.grabWindow();
}

} // namespace

std::vector<GalleryView> galleryViews() {
    std::vector<GalleryView> views;
    for (const auto family : {kitViews, capsuleViews, menuBarViews, mainWindowViews, settingsViews,
                              recordingSettingsViews, onboardingViews}) {
        std::vector<GalleryView> more = family();
        std::move(more.begin(), more.end(), std::back_inserter(views));
    }
    return views;
}

QImage renderGalleryView(const GalleryView& view, const GalleryLook& look) {
    const Complaints complaints;
    QImage picture;
    {
        GalleryWorld world(look.dark, look.accent);
        const std::unique_ptr<QQmlEngine> engine = makeQmlEngine();
        QQmlComponent component(engine.get(), source(view));
        if (!component.isReady())
            throw PlainError(view.name + QLatin1String(": ") + component.errorString());
        const std::unique_ptr<QObject> object(component.createWithInitialProperties(view.prepare(world)));
        auto* item = qobject_cast<QQuickItem*>(object.get());
        if (!item)
            throw PlainError(view.name + QLatin1String(": ") + component.errorString());
        picture = draw(view, look.dark, *item);
    }
    complaints.throwIfAny(view.name);
    return picture;
}

} // namespace velmora::test
