#pragma once

#include "samples.h"

#include <QString>

#include <optional>
#include <stdexcept>
#include <variant>

namespace velmora::bench {

/// What a figure is to reach; a monostate says that it is only reported.
namespace target {
struct MedianAtMost {
    double value;
};
struct P95AtMost {
    double value;
};
struct MedianAtLeast {
    double value;
};
/// The median, as a multiple of the baseline's.
struct ShareOfBaseline {
    double value;
};
} // namespace target

using Target = std::variant<std::monostate, target::MedianAtMost, target::P95AtMost, target::MedianAtLeast,
                            target::ShareOfBaseline>;

/// One line of the table.
struct Result {
    QString what;
    QString unit;
    Samples measured;
    QString baselineName;
    Samples baseline; ///< measured in the same run, in the same unit
    Target target;

    /// None without a target.
    [[nodiscard]] std::optional<bool> isMet() const;
    /// Of high figures the bad end is the low one: what all but one run in twenty were better than.
    [[nodiscard]] double p95(const Samples& samples) const;
};

/// Why a figure could not be measured.
class NotMeasured : public std::runtime_error {
public:
    explicit NotMeasured(const QString& why)
        : std::runtime_error(why.toStdString()) {}
};

} // namespace velmora::bench
