#include "ui/kit/v_font.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmora {
namespace {

QFont font(const QStringList& families, qreal size, VFont::Weight weight) {
    QFont result;
    result.setFamilies(families);
    result.setWeight(static_cast<QFont::Weight>(weight));
    // setPixelSize() takes whole numbers only, so the size goes by points and the resolution that Qt counts
    // them with.
    const QScreen* screen = QGuiApplication::primaryScreen();
    result.setPointSizeF(size * 72 / (screen ? screen->logicalDotsPerInchY() : 96));
    result.setHintingPreference(QFont::PreferNoHinting); // letters keep their distances at every scale
    return result;
}

} // namespace

QFont VFont::display(qreal size, Weight weight) {
    return font({QStringLiteral("Inter"), QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans"),
                 QStringLiteral("Noto Color Emoji")},
                size, weight);
}

QFont VFont::mono(qreal size, Weight weight) {
    return font({QStringLiteral("JetBrains Mono"), QStringLiteral("DejaVu Sans Mono")}, size, weight);
}

} // namespace velmora
