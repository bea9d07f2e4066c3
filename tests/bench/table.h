#pragma once

#include "result.h"

namespace velmora::bench {

/// The lines of results, in columns.
class Table {
public:
    Table();
    void add(const Result& result);
    void addFailure(const QString& figure, const QString& why);
    void print() const;

private:
    using Line = std::vector<QString>;

    std::vector<Line> m_lines;
    std::vector<QString> m_failures;
};

} // namespace velmora::bench
