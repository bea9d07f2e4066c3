#include "ui/main_window/line_spacing.h"

#include <QTextCursor>
#include <QTextDocument>

namespace velmora {

void LineSpacing::apply(QQuickTextDocument* document, qreal height) {
    QTextBlockFormat format;
    format.setLineHeight(height * 100, QTextBlockFormat::ProportionalHeight);
    QTextCursor all(document->textDocument());
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(format);
}

} // namespace velmora
