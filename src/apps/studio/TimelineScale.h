// SPDX-License-Identifier: BSD-3-Clause
// Where a shot's frames are from left to right: all of them in the room that there is, or, zoomed, a
// part of them that is scrolled.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace studio {

class TimelineScale {
public:
    // Ascending, not empty. All of them are shown then.
    void SetFrames(std::vector<std::int64_t> numbers);
    std::span<const std::int64_t> Numbers() const { return m_numbers; }
    std::size_t Count() const { return m_numbers.size(); }

    // Where the first frame begins and the last one ends while all are shown.
    void SetRoom(double left, double right);
    double
    EdgeAt(std::size_t index) const; // left edge of the frame; Count() is that behind the last
    double MiddleOf(std::size_t index) const { return (EdgeAt(index) + EdgeAt(index + 1)) / 2; }
    std::size_t IndexAt(double x) const; // the nearest one
    double Cell() const;                 // width of a frame
    // The part of the shot, from one index up to another that is no more in it, that these numbers take.
    std::pair<std::size_t, std::size_t> PartOf(std::int64_t first, std::int64_t last) const;

    void Fit() { m_zoom = 1, m_scroll = 0; }
    bool IsFit() const { return m_zoom <= 1; }
    // What is at x stays there.
    void ZoomAround(double x, double factor);
    double Scroll() const { return m_scroll; } // 0 to MostScroll()
    double MostScroll() const { return Length() - (m_right - m_left); }
    void SetScroll(double scroll);
    // Scrolls as little as it takes to show the frame and some beside it.
    void Reveal(std::size_t index);

private:
    double Length() const { return (m_right - m_left) * m_zoom; }

    std::vector<std::int64_t> m_numbers { 1 };
    double m_left = 0;
    double m_right = 1;
    double m_zoom = 1;
    double m_scroll = 0;
};

} // namespace studio
