// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/TimelineScale.h"

#include <algorithm>
#include <cmath>

namespace studio {

namespace {

constexpr double kWidestFrame = 60;

} // namespace

void TimelineScale::SetFrames(std::vector<std::int64_t> numbers) {
    m_numbers = std::move(numbers);
    Fit();
}

void TimelineScale::SetRoom(double left, double right) {
    m_left = left;
    m_right = std::max(right, left + 1);
    SetScroll(m_scroll);
}

double TimelineScale::Cell() const {
    return Length() / static_cast<double>(m_numbers.size());
}

double TimelineScale::EdgeAt(std::size_t index) const {
    return m_left - m_scroll + Cell() * static_cast<double>(index);
}

std::size_t TimelineScale::IndexAt(double x) const {
    const auto last = static_cast<double>(m_numbers.size() - 1);
    return static_cast<std::size_t>(
        std::clamp(std::floor((x - m_left + m_scroll) / Cell()), 0.0, last));
}

std::pair<std::size_t, std::size_t> TimelineScale::PartOf(std::int64_t first,
                                                          std::int64_t last) const {
    const auto index = [&](auto at) { return static_cast<std::size_t>(at - m_numbers.begin()); };
    return { index(std::ranges::lower_bound(m_numbers, first)),
             index(std::ranges::upper_bound(m_numbers, last)) };
}

void TimelineScale::ZoomAround(double x, double factor) {
    const auto frame = (x - m_left + m_scroll) / Cell();
    const auto most = kWidestFrame * static_cast<double>(m_numbers.size()) / (m_right - m_left);
    m_zoom = std::clamp(m_zoom * factor, 1.0, std::max(most, 1.0));
    SetScroll(frame * Cell() - (x - m_left));
}

void TimelineScale::SetScroll(double scroll) {
    m_scroll = std::clamp(scroll, 0.0, MostScroll());
}

void TimelineScale::Reveal(std::size_t index) {
    const auto aside = std::min(2 * Cell(), (m_right - m_left) / 4);
    const auto before = m_left - (EdgeAt(index) - aside);
    const auto behind = EdgeAt(index + 1) + aside - m_right;
    SetScroll(before > 0 ? m_scroll - before : m_scroll + std::max(behind, 0.0));
}

} // namespace studio
