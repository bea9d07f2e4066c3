#include "core/grapheme_text.h"

#include <QTextBoundaryFinder>

namespace velmora {
namespace {

class Clusters {
public:
    explicit Clusters(const QString& text)
        : m_text(text)
        , m_finder(QTextBoundaryFinder::Grapheme, text) {}

    [[nodiscard]] bool atEnd() const { return m_position >= m_text.size(); }
    [[nodiscard]] qsizetype position() const { return m_position; }

    /// The next cluster, in composed form.
    QString next() {
        const qsizetype from = m_position;
        const qsizetype to = m_finder.toNextBoundary();
        m_position = to < 0 ? m_text.size() : to;
        return m_text.mid(from, m_position - from).normalized(QString::NormalizationForm_C);
    }

private:
    const QString& m_text;
    QTextBoundaryFinder m_finder;
    qsizetype m_position = 0;
};

} // namespace

std::optional<QString> textBeyondPrefix(const QString& text, const QString& prefix) {
    Clusters inText(text);
    Clusters inPrefix(prefix);
    while (!inPrefix.atEnd()) {
        if (inText.atEnd() || inText.next() != inPrefix.next())
            return std::nullopt;
    }
    return text.mid(inText.position());
}

} // namespace velmora
