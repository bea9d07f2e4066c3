#include "result.h"

namespace velmora::bench {
namespace {

bool wantsHigh(const Target& target) {
    return std::holds_alternative<target::MedianAtLeast>(target) ||
           std::holds_alternative<target::ShareOfBaseline>(target);
}

struct Check {
    const Result& result;

    std::optional<bool> operator()(std::monostate) const { return std::nullopt; }
    std::optional<bool> operator()(const target::MedianAtMost& most) const {
        return result.measured.median() <= most.value;
    }
    std::optional<bool> operator()(const target::P95AtMost& most) const {
        return result.p95(result.measured) <= most.value;
    }
    std::optional<bool> operator()(const target::MedianAtLeast& least) const {
        return result.measured.median() >= least.value;
    }
    std::optional<bool> operator()(const target::ShareOfBaseline& share) const {
        return result.measured.median() >= share.value * result.baseline.median();
    }
};

} // namespace

std::optional<bool> Result::isMet() const {
    return std::visit(Check{*this}, target);
}

double Result::p95(const Samples& samples) const {
    return samples.quantile(wantsHigh(target) ? 0.05 : 0.95);
}

} // namespace velmora::bench
