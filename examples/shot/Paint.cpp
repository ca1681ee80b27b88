// SPDX-License-Identifier: BSD-3-Clause
#include "Paint.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace shot {

namespace {

constexpr int kCurveSteps = 10;

// The uniform Catmull-Rom spline between `from` and `to`.
Point OnCurve(Point before, Point from, Point to, Point after, float t) {
    const auto axis = [t](float a, float b, float c, float d) {
        return b + 0.5F * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
    };
    return { axis(before.x, from.x, to.x, after.x), axis(before.y, from.y, to.y, after.y) };
}

std::uint32_t Scramble(std::uint32_t value) {
    value ^= value >> 16;
    value *= 0x7FEB352DU;
    value ^= value >> 15;
    value *= 0x846CA68BU;
    return value ^ value >> 16;
}

// The values at the corners of the noise's lattice, which repeats after kLattice of them.
constexpr std::int32_t kLattice = 256;

const std::vector<float>& LatticeValues() {
    static const std::vector<float> kValues = [] {
        std::vector<float> values;
        for (std::int32_t y = 0; y < kLattice; ++y)
            for (std::int32_t x = 0; x < kLattice; ++x)
                values.push_back(Speckle(x, y));
        return values;
    }();
    return kValues;
}

// Between the four corners of the unit square that the point lies in.
float LatticeNoise(const float* values, Point point) {
    // Truncation and a step are several times faster than std::floor without SSE4.1.
    const auto x = static_cast<std::int32_t>(point.x) - (point.x < 0);
    const auto y = static_cast<std::int32_t>(point.y) - (point.y < 0);
    const auto smooth = [](float t) { return t * t * (3 - 2 * t); };
    const float across = smooth(point.x - static_cast<float>(x));
    const float down = smooth(point.y - static_cast<float>(y));
    const auto at = [values](std::int32_t column, std::int32_t row) {
        return values[(row & (kLattice - 1)) * kLattice + (column & (kLattice - 1))];
    };
    const float top = at(x, y) + (at(x + 1, y) - at(x, y)) * across;
    const float bottom = at(x, y + 1) + (at(x + 1, y + 1) - at(x, y + 1)) * across;
    return top + (bottom - top) * down;
}

// Adds the signed area right of an edge to one row. Summed from left to right, the row then holds
// how much of each pixel lies inside. The row has one value more than pixels.
void AddEdge(float* row, int width, float fromX, float toX, float height) {
    const float limit = static_cast<float>(width);
    const float low = std::clamp(std::min(fromX, toX), 0.0F, limit);
    const float high = std::clamp(std::max(fromX, toX), 0.0F, limit);
    const int first = std::min(static_cast<int>(low), width - 1);
    const int last = std::min(static_cast<int>(high), width - 1);
    if (first == last) {
        const float inside = 1 - ((low + high) / 2 - static_cast<float>(first));
        row[first] += height * inside;
        row[first + 1] += height * (1 - inside);
        return;
    }
    // `covered` is the part of the row's height that the edge has crossed at a pixel's right side;
    // a pixel's area is the mean over the pixel of what was crossed.
    const float slope = height / (high - low);
    float before = 0;
    for (int x = first; x <= last; ++x) {
        const float from = std::max(low, static_cast<float>(x));
        const float to = std::min(high, static_cast<float>(x + 1));
        const float start = slope * (from - low);
        const float end = slope * (to - low);
        const float area = (start + end) / 2 * (to - from) + end * (static_cast<float>(x + 1) - to);
        row[x] += area - before;
        before = area;
    }
    row[last + 1] += height - before;
}

// The part of the segment in each row of the mask.
void AddSegment(std::vector<float>& area, const Mask& mask, Point from, Point to) {
    const float sign = from.y < to.y ? 1.0F : -1.0F;
    if (from.y > to.y)
        std::swap(from, to);
    if (from.y == to.y)
        return;
    const float slope = (to.x - from.x) / (to.y - from.y);
    const int first = std::max(0, static_cast<int>(std::floor(from.y)));
    const int last = std::min(mask.Height() - 1, static_cast<int>(std::floor(to.y)));
    for (int y = first; y <= last; ++y) {
        const float top = std::max(from.y, static_cast<float>(y));
        const float bottom = std::min(to.y, static_cast<float>(y + 1));
        if (bottom > top)
            AddEdge(area.data() + static_cast<std::ptrdiff_t>(y) * (mask.Width() + 1), mask.Width(),
                    from.x + slope * (top - from.y), from.x + slope * (bottom - from.y),
                    sign * (bottom - top));
    }
}

// The distance to a segment, and how far along it the nearest point lies, 0 to 1.
std::pair<float, float> Distance(Point point, Point from, Point to) {
    const float dx = to.x - from.x;
    const float dy = to.y - from.y;
    const float length2 = dx * dx + dy * dy;
    const float along =
        length2 > 0
            ? std::clamp(((point.x - from.x) * dx + (point.y - from.y) * dy) / length2, 0.0F, 1.0F)
            : 0;
    return { std::hypot(point.x - from.x - along * dx, point.y - from.y - along * dy), along };
}

// The running mean over 2 * radius + 1 values.
void BlurLine(float* values, int count, std::ptrdiff_t stride, int radius,
              std::vector<float>& line) {
    line.resize(static_cast<std::size_t>(count));
    float sum = 0;
    const auto at = [&](int i) { return i >= 0 && i < count ? values[i * stride] : 0.0F; };
    for (int i = -radius; i < radius; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        sum += at(i + radius);
        line[static_cast<std::size_t>(i)] = sum / static_cast<float>(2 * radius + 1);
        sum -= at(i - radius);
    }
    for (int i = 0; i < count; ++i)
        values[i * stride] = std::max(0.0F, line[static_cast<std::size_t>(i)]);
}

// Three running means come close to a Gaussian.
void Blur(Mask& mask, int radius) {
    std::vector<float> line;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < mask.Height(); ++y)
            BlurLine(mask.Row(y), mask.Width(), 1, radius, line);
        for (int x = 0; x < mask.Width(); ++x)
            BlurLine(mask.Row(0) + x, mask.Height(), mask.Width(), radius, line);
    }
}

} // namespace

Color Mix(Color from, Color to, float part) {
    return { from.red + (to.red - from.red) * part, from.green + (to.green - from.green) * part,
             from.blue + (to.blue - from.blue) * part };
}

float SmoothStep(float low, float high, float value) {
    const float t = std::clamp((value - low) / (high - low), 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}

float Speckle(std::int32_t x, std::int32_t y) {
    const std::uint32_t bits = Scramble(static_cast<std::uint32_t>(x) * 0x9E3779B1U +
                                        Scramble(static_cast<std::uint32_t>(y)));
    return static_cast<float>(bits >> 8) / 8388608.0F - 1;
}

float Noise(Point point, int octaves) {
    const float* values = LatticeValues().data();
    float sum = 0;
    float weight = 0.5F;
    for (int octave = 0; octave < octaves; ++octave, weight /= 2) {
        sum += weight * LatticeNoise(values, point);
        // The shift keeps the lattices of the octaves from meeting.
        point = { point.x * 2 + 17.3F, point.y * 2 + 5.9F };
    }
    return sum;
}

Outline::Outline(std::vector<Point> points, bool closed)
    : m_points(std::move(points)), m_closed(closed) {}

Outline Outline::Polygon(std::vector<Point> points) {
    return { std::move(points), true };
}

Outline Outline::Smooth(const std::vector<Point>& points) {
    const std::size_t count = points.size();
    std::vector<Point> curve;
    for (std::size_t i = 0; i < count; ++i)
        for (int step = 0; step < kCurveSteps; ++step)
            curve.push_back(OnCurve(points[(i + count - 1) % count], points[i],
                                    points[(i + 1) % count], points[(i + 2) % count],
                                    static_cast<float>(step) / kCurveSteps));
    return { std::move(curve), true };
}

Outline Outline::SmoothOpen(const std::vector<Point>& points) {
    std::vector<Point> curve;
    const std::size_t last = points.size() - 1;
    for (std::size_t i = 0; i < last; ++i)
        for (int step = 0; step < kCurveSteps; ++step)
            curve.push_back(OnCurve(points[i > 0 ? i - 1 : 0], points[i], points[i + 1],
                                    points[std::min(i + 2, last)],
                                    static_cast<float>(step) / kCurveSteps));
    curve.push_back(points.back());
    return { std::move(curve), false };
}

Outline Outline::Ellipse(Point center, float radiusX, float radiusY) {
    constexpr int kSides = 48;
    std::vector<Point> points;
    for (int i = 0; i < kSides; ++i) {
        const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(i) / kSides;
        points.push_back(
            { center.x + radiusX * std::cos(angle), center.y + radiusY * std::sin(angle) });
    }
    return { std::move(points), true };
}

Outline Outline::Placed(Point by, float scale, float radians) const {
    const float cosine = std::cos(radians) * scale;
    const float sine = std::sin(radians) * scale;
    Outline placed = *this;
    for (Point& point : placed.m_points)
        point = { by.x + cosine * point.x - sine * point.y,
                  by.y + sine * point.x + cosine * point.y };
    return placed;
}

Mask::Mask(int left, int top, int width, int height)
    : m_left(left), m_top(top), m_width(std::max(0, width)), m_height(std::max(0, height)),
      m_values(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height)) {}

float Mask::At(int x, int y) const {
    x -= m_left;
    y -= m_top;
    return x >= 0 && y >= 0 && x < m_width && y < m_height ? Row(y)[x] : 0;
}

Mask Mask::And(const Mask& other) const {
    Mask result = *this;
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            result.Row(y)[x] *= other.At(m_left + x, m_top + y);
    return result;
}

Mask Mask::Without(const Mask& other) const {
    Mask result = *this;
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            result.Row(y)[x] *= 1 - other.At(m_left + x, m_top + y);
    return result;
}

Canvas::Canvas(int width, int height)
    : m_width(width), m_height(height), m_scale(static_cast<float>(height) / kFieldHeight),
      m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

Mask Canvas::Box(Point topLeft, Point bottomRight) const {
    const auto pixel = [this](float units, int limit) {
        return std::clamp(units * m_scale, 0.0F, static_cast<float>(limit));
    };
    const int left = static_cast<int>(std::floor(pixel(topLeft.x, m_width)));
    const int top = static_cast<int>(std::floor(pixel(topLeft.y, m_height)));
    const int right = static_cast<int>(std::ceil(pixel(bottomRight.x, m_width)));
    const int bottom = static_cast<int>(std::ceil(pixel(bottomRight.y, m_height)));
    return { left, top, right - left, bottom - top };
}

Mask Canvas::BoxAround(const Outline& outline, float margin) const {
    Point low = outline.Points().front();
    Point high = low;
    for (const Point& point : outline.Points()) {
        low = { std::min(low.x, point.x), std::min(low.y, point.y) };
        high = { std::max(high.x, point.x), std::max(high.y, point.y) };
    }
    return Box({ low.x - margin, low.y - margin }, { high.x + margin, high.y + margin });
}

Mask Canvas::Everything() const {
    return Shape({ 0, 0 }, { FieldWidth(), kFieldHeight }, [](Point) { return 1.0F; });
}

Mask Canvas::Fill(const Outline& outline) const {
    return Soft(outline, 0);
}

Mask Canvas::Soft(const Outline& outline, float radius) const {
    Mask mask = BoxAround(outline, 3 * radius + 1);
    if (mask.Width() == 0 || mask.Height() == 0)
        return mask;
    std::vector<float> area(static_cast<std::size_t>(mask.Width() + 1) *
                            static_cast<std::size_t>(mask.Height()));
    const auto inMask = [&](Point point) {
        return Point { point.x * m_scale - static_cast<float>(mask.Left()),
                       point.y * m_scale - static_cast<float>(mask.Top()) };
    };
    const std::vector<Point>& points = outline.Points();
    for (std::size_t i = 0; i < points.size(); ++i)
        AddSegment(area, mask, inMask(points[i]), inMask(points[(i + 1) % points.size()]));
    for (int y = 0; y < mask.Height(); ++y) {
        float sum = 0;
        for (int x = 0; x < mask.Width(); ++x) {
            sum += area[static_cast<std::size_t>(y) * static_cast<std::size_t>(mask.Width() + 1) +
                        static_cast<std::size_t>(x)];
            mask.Row(y)[x] = std::min(1.0F, std::abs(sum));
        }
    }
    if (radius > 0)
        Blur(mask, std::max(1, static_cast<int>(radius * m_scale / 2)));
    return mask;
}

Mask Canvas::Stroke(const Outline& line, float width) const {
    Mask mask = BoxAround(line, width);
    const std::vector<Point>& points = line.Points();
    const std::size_t segments = points.size() - (line.IsClosed() ? 0 : 1);
    for (std::size_t i = 0; i < segments; ++i) {
        const Point from = points[i];
        const Point to = points[(i + 1) % points.size()];
        const Mask near = BoxAround(Outline::Polygon({ from, to }), width);
        for (int y = near.Top(); y < near.Top() + near.Height(); ++y) {
            for (int x = near.Left(); x < near.Left() + near.Width(); ++x) {
                const auto [distance, along] = Distance(FieldPoint(x, y), from, to);
                const float at = (static_cast<float>(i) + along) / static_cast<float>(segments);
                const float pressure =
                    line.IsClosed() ? 1 : std::min(1.0F, 0.35F + 4 * at * (1 - at));
                const float inside = (width / 2 * pressure - distance) * m_scale + 0.5F;
                float& value = mask.Row(y - mask.Top())[x - mask.Left()];
                value = std::max(value, std::clamp(inside, 0.0F, 1.0F));
            }
        }
    }
    return mask;
}

void Canvas::Paint(const Mask& mask, Color color, float opacity) {
    Paint(
        mask, [color](Point) { return color; }, opacity);
}

} // namespace shot
