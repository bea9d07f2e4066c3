#include "samples.h"

#include <algorithm>
#include <cmath>

namespace velmora::bench {

double milliseconds(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

Samples::Samples(std::vector<double> values)
    : m_sorted(std::move(values)) {
    std::ranges::sort(m_sorted);
}

void Samples::add(double value) {
    m_sorted.insert(std::ranges::upper_bound(m_sorted, value), value);
}

void Samples::add(const Samples& more) {
    const auto middle = m_sorted.insert(m_sorted.end(), more.m_sorted.begin(), more.m_sorted.end());
    std::inplace_merge(m_sorted.begin(), middle, m_sorted.end());
}

double Samples::quantile(double q) const {
    const auto rank = std::size_t(std::ceil(q * double(m_sorted.size())));
    return m_sorted.at(std::clamp<std::size_t>(rank, 1, m_sorted.size()) - 1);
}

} // namespace velmora::bench
