#include "table.h"

#include <cstdio>

namespace velmora::bench {
namespace {

QString number(double value) {
    const double size = std::abs(value);
    return QString::number(value, 'f', size >= 100 ? 0 : size >= 10 ? 1 : size >= 0.1 ? 2 : 4);
}

struct TargetText {
    QString operator()(std::monostate) const { return QStringLiteral("-"); }
    QString operator()(const target::MedianAtMost& target) const {
        return QStringLiteral("median <= ") + QString::number(target.value);
    }
    QString operator()(const target::P95AtMost& target) const {
        return QStringLiteral("p95 <= ") + QString::number(target.value);
    }
    QString operator()(const target::MedianAtLeast& target) const {
        return QStringLiteral("median >= ") + QString::number(target.value);
    }
    QString operator()(const target::ShareOfBaseline& target) const {
        return QStringLiteral("%1 of baseline").arg(target.value);
    }
};

QString metText(const std::optional<bool>& met) {
    if (!met)
        return QStringLiteral("-");
    return *met ? QStringLiteral("yes") : QStringLiteral("NO");
}

} // namespace

Table::Table() {
    m_lines.push_back({QStringLiteral("figure"), QStringLiteral("unit"), QStringLiteral("runs"),
                       QStringLiteral("median"), QStringLiteral("p95"), QStringLiteral("target"),
                       QStringLiteral("met"), QStringLiteral("base"), QStringLiteral("p95"),
                       QStringLiteral("baseline")});
}

void Table::add(const Result& result) {
    m_lines.push_back({result.what, result.unit, QString::number(result.measured.count()),
                       number(result.measured.median()), number(result.p95(result.measured)),
                       std::visit(TargetText{}, result.target), metText(result.isMet()),
                       number(result.baseline.median()), number(result.p95(result.baseline)),
                       result.baselineName});
}

void Table::addFailure(const QString& figure, const QString& why) {
    m_failures.push_back(QStringLiteral("%1: not measured: %2").arg(figure, why));
}

void Table::print() const {
    std::vector<qsizetype> widths(m_lines.front().size());
    for (const Line& line : m_lines) {
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], line[i].size());
    }
    for (const Line& line : m_lines) {
        QString text;
        for (std::size_t i = 0; i < line.size(); ++i)
            text += line[i].leftJustified(widths[i] + 2);
        std::puts(qUtf8Printable(text.trimmed()));
    }
    for (const QString& failure : m_failures)
        std::puts(qUtf8Printable(failure));
}

} // namespace velmora::bench
