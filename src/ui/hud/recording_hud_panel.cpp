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
    , m_compositing(compositing) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput |
             Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint | Qt::BypassWindowManagerHint);
    QSurfaceFormat seeThrough = format();
    seeThrough.setAlphaBufferSize(8);
    setFormat(seeThrough);
    setColor(Qt::transparent);
    setResizeMode(SizeRootObjectToView);
    auto* model = new RecordingHUDModel(coord, settings, this); // the view is gone before its children
    setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(model)}});
    setSource(viewURL());
    connect(&compositing, &Compositing::changed, this, &RecordingHUDPanel::updateMask);
    connect(rootObject(), SIGNAL(capsuleRectChanged()), this, SLOT(updateMask()));
}

void RecordingHUDPanel::prewarm(UiEngine& engine) {
    auto* component = new QQmlComponent(&engine.get(), &engine.get());
    component->loadUrl(viewURL());
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
    if (m_compositing.isActive()) {
        setMask({});
        return;
    }
    const QRectF capsule = rootObject()->property("capsuleRect").toRectF();
    QPainterPath outline;
    outline.addRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
    setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

} // namespace velmora
