#include "ui/hud/recording_hud_panel.h"

#include "ui/hud/hud_placement.h"

#include <QPainterPath>
#include <QQmlComponent>
#include <QQuickItem>

namespace velmora {
namespace {

QUrl viewURL() {
    return QUrl(QStringLiteral("qrc:/qt/qml/Velmora/Hud/RecordingHUD.qml"));
}

} // namespace

RecordingHUDPanel::RecordingHUDPanel(UiEngine& engine, const PipelineCoordinator& coord,
                                     const AppSettings& settings, const UserDefaults& defaults,
                                     Screens& screens, const Compositing& compositing)
    : QQuickView(&engine.get(), nullptr)
    , m_defaults(defaults)
    , m_screens(screens)
    , m_compositing(compositing)
    , m_model(new RecordingHUDModel(coord, settings, this)) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput |
             Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint | Qt::BypassWindowManagerHint);
    QSurfaceFormat seeThrough = format();
    seeThrough.setAlphaBufferSize(8);
    setFormat(seeThrough);
    setColor(Qt::transparent);
    setResizeMode(SizeRootObjectToView);
    setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(m_model)}});
    setSource(viewURL());
    connect(&compositing, &Compositing::changed, this, &RecordingHUDPanel::updateMask);
    connect(rootObject(), SIGNAL(capsuleRectChanged()), this, SLOT(updateMask()));
}

void RecordingHUDPanel::prewarm(UiEngine& engine, const PipelineCoordinator& coord,
                                const AppSettings& settings, const UserDefaults& defaults, Screens& screens,
                                const Compositing& compositing) {
    // As long as a component lives, what it has loaded stays loaded.
    auto* component = new QQmlComponent(&engine.get(), &engine.get());
    component->loadUrl(viewURL());
    // The rest is what Qt makes with its first window, frame and text; nobody sees this one.
    RecordingHUDPanel first(engine, coord, settings, defaults, screens, compositing);
    first.m_model->setState(pipeline_state::Transcribing{});
    first.m_model->setState(pipeline_state::Recording{});
    first.reposition();
    first.create();
    first.grabWindow();
}

void RecordingHUDPanel::reposition() {
    if (const auto screen = m_screens.mainScreen())
        setGeometry(hudPanelFrame(*screen, m_defaults.string(QStringLiteral("hudSize")),
                                  m_defaults.string(QStringLiteral("hudPosition"))));
}

void RecordingHUDPanel::orderFrontRegardless() {
    updateMask();
    show();
    raise();
}

void RecordingHUDPanel::orderOut() {
    hide();
}

// Where transparency comes out black, the window is cut to the capsule.
void RecordingHUDPanel::updateMask() {
    QRegion shape; // an empty one is the whole window
    if (!m_compositing.isActive()) {
        const QRectF capsule = rootObject()->property("capsuleRect").toRectF();
        QPainterPath outline;
        outline.addRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
        shape = QRegion(outline.toFillPolygon().toPolygon());
    }
    if (shape != mask())
        setMask(shape);
}

} // namespace velmora
