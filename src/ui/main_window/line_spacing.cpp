#include "ui/main_window/line_spacing.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace velmora {

void LineSpacing::apply(QQuickTextDocument* document, qreal height) {
    QTextBlockFormat format;
    format.setLineHeight(height * 100, QTextBlockFormat::ProportionalHeight);
    QTextDocument& text = *document->textDocument();
    QTextCursor change(&text); // one for all lines, so that they are laid out once
    change.beginEditBlock();
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
        QTextCursor(block).mergeBlockFormat(format);
    change.endEditBlock();
}

} // namespace velmora
