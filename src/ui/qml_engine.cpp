#include "ui/qml_engine.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Velmora_KitPlugin)
Q_IMPORT_QML_PLUGIN(Velmora_NavigationPlugin)
Q_IMPORT_QML_PLUGIN(Velmora_HudPlugin)
Q_IMPORT_QML_PLUGIN(Velmora_MenuBarPlugin)
Q_IMPORT_QML_PLUGIN(Velmora_SettingsPlugin)
Q_IMPORT_QML_PLUGIN(Velmora_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Velmora_OnboardingPlugin)

namespace velmora {

void chooseRendering() {
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

std::unique_ptr<QQmlEngine> makeQmlEngine() {
    auto engine = std::make_unique<QQmlEngine>();
    engine->addImportPath(QStringLiteral(":/qt/qml"));
    return engine;
}

} // namespace velmora
