#include "support/ui/view_host.h"

#include "support/wait.h"

#include <QQmlComponent>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

QAccessibleInterface* accessible(QQuickItem* item) {
    return QAccessible::queryAccessibleInterface(item);
}

bool isShown(const QQuickItem* item) {
    return item->isVisible() && item->width() > 0 && item->height() > 0;
}

template<typename Visit>
void visitShown(QQuickItem* item, const Visit& visit) {
    if (!item->isVisible())
        return;
    visit(item);
    for (QQuickItem* child : item->childItems())
        visitShown(child, visit);
}

} // namespace

ViewHost::ViewHost() {
    QObject::connect(m_engine.get(), &QQmlEngine::warnings, m_engine.get(),
                     [](const QList<QQmlError>& warnings) {
                         for (const QQmlError& warning : warnings)
                             ADD_FAILURE() << warning.toString().toStdString();
                     });
}

void ViewHost::show(const char* module, const char* type, const QVariantMap& properties, QSize size) {
    m_view = std::make_unique<QQuickView>(m_engine.get(), nullptr);
    m_view->setInitialProperties(properties);
    m_view->setSource(QUrl(
        QStringLiteral("qrc:/qt/qml/Velmora/%1/%2.qml").arg(QLatin1String(module), QLatin1String(type))));
    finishShowing(size);
}

void ViewHost::showSource(const QByteArray& qml, const QVariantMap& properties) {
    auto* component = new QQmlComponent(m_engine.get(), m_engine.get());
    component->setData(qml, QUrl(QStringLiteral("qrc:/test.qml")));
    QObject* object = component->createWithInitialProperties(properties);
    ASSERT_TRUE(object) << component->errorString().toStdString();
    m_view = std::make_unique<QQuickView>(m_engine.get(), nullptr);
    m_view->setContent(component->url(), component, object);
    finishShowing({});
}

void ViewHost::finishShowing(QSize size) {
    for (const QQmlError& error : m_view->errors())
        ADD_FAILURE() << error.toString().toStdString();
    ASSERT_TRUE(root());
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(theme.isDark() ? QColor(32, 36, 40) : QColor(244, 245, 246));
    m_view->resize(size.isValid() ? size
                                  : QSizeF(root()->implicitWidth(), root()->implicitHeight()).toSize());
    m_view->show();
    m_view->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_view.get(), 30'000));
}

QQuickItem* ViewHost::find(const QString& name) const {
    QQuickItem* found = nullptr;
    visitShown(root(), [&](QQuickItem* item) {
        if (!found && isShown(item) && accessibleName(item) == name)
            found = item;
    });
    if (!found)
        found = root()->objectName() == name ? root() : root()->findChild<QQuickItem*>(name);
    if (!found)
        ADD_FAILURE() << "no \"" << name.toStdString() << "\" in the view";
    return found;
}

bool ViewHost::has(const QString& name) const {
    bool found = false;
    visitShown(root(), [&](QQuickItem* item) {
        found = found || (isShown(item) && (accessibleName(item) == name || item->objectName() == name));
    });
    return found;
}

QStringList ViewHost::texts() const {
    QStringList texts;
    visitShown(root(), [&](QQuickItem* item) {
        if (item->inherits("QQuickText") && isShown(item))
            texts.append(item->property("text").toString());
    });
    return texts;
}

void ViewHost::click(QQuickItem* item) const {
    if (!item)
        return;
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, centre.toPoint());
}

void ViewHost::hover(QQuickItem* item) const {
    if (!item)
        return;
    QTest::mouseMove(m_view.get(), QPoint(0, 0));
    QTest::mouseMove(m_view.get(),
                     item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
}

void ViewHost::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(m_view.get(), key, modifiers);
}

void ViewHost::type(const QString& text) const {
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, m_view.get(), Qt::Key_unknown, QString(letter), {});
}

QString accessibleName(QQuickItem* item) {
    QAccessibleInterface* interface = accessible(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

QAccessible::Role accessibleRole(QQuickItem* item) {
    QAccessibleInterface* interface = accessible(item);
    return interface ? interface->role() : QAccessible::NoRole;
}

} // namespace velmora::test
