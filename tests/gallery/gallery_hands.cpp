#include "gallery/gallery_hands.h"

#include "foundation/error.h"

#include <QQuickWindow>
#include <QTest>

namespace velmora::test {
namespace {

QPoint middle(const QQuickItem& item) {
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
}

} // namespace

QQuickItem& part(QQuickItem& view, const char* name) {
    auto* item = view.findChild<QQuickItem*>(QLatin1String(name));
    if (!item)
        throw PlainError(QStringLiteral("no \"%1\" in the view").arg(QLatin1String(name)));
    return *item;
}

void hover(QQuickItem& item) {
    QTest::mouseMove(item.window(), middle(item));
}

void click(QQuickItem& item) {
    QTest::mouseClick(item.window(), Qt::LeftButton, {}, middle(item));
}

void tab(QQuickItem& view, int times) {
    for (int i = 0; i < times; ++i)
        QTest::keyClick(view.window(), Qt::Key_Tab);
}

} // namespace velmora::test
