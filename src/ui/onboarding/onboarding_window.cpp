#include "ui/onboarding/onboarding_window.h"

#include <QQuickItem>

namespace velmora {
namespace {

constexpr QSize contentSize(680, 580);

} // namespace

OnboardingWindow::OnboardingWindow(UiEngine& engine, const OnboardingNeighbours& neighbours)
    : OrdinaryWindow(engine, neighbours.loop, {.content = contentSize, .minimum = contentSize})
    , m_model(neighbours) {
    setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
             Qt::WindowCloseButtonHint);
    m_model.onClose = [this] { close(); };
    setView(QUrl(QStringLiteral("qrc:/qt/qml/Velmora/Onboarding/OnboardingView.qml")), m_model);
}

OnboardingWindow::~OnboardingWindow() {
    delete rootObject();
}

void OnboardingWindow::exposeEvent(QExposeEvent* event) {
    OrdinaryWindow::exposeEvent(event);
    m_model.setOnScreen(isExposed());
}

} // namespace velmora
