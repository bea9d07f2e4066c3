#include "ui/kit/brand_icon.h"

#include "ui/kit/brand_bars.h"
#include "ui/kit/brand_mark.h"

#include <QPainter>
#include <QPixmap>

namespace velmora {

QIcon brandIcon(const QColor& accent) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paintBrandMark(painter, picture.rect(), restingBrandBars, accent);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

} // namespace velmora
