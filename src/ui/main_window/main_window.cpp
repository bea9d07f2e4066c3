#include "ui/main_window/main_window.h"

#include <QQuickItem>

namespace velmora {

MainWindow::MainWindow(const Neighbours& neighbours)
    : OrdinaryWindow(neighbours.engine, neighbours.loop, {.content = {980, 680}, .minimum = {760, 560}})
    , m_model(neighbours.model) {
    setView(QUrl(QStringLiteral("qrc:/qt/qml/Velmora/MainWindow/MainWindowView.qml")), m_model);
}

MainWindow::~MainWindow() {
    delete rootObject();
}

} // namespace velmora
