// SPDX-License-Identifier: BSD-3-Clause
// A small painter for pictures made by arithmetic: outlines, their anti-aliased coverage, and a canvas
// of floating-point colours. Lengths are field units: a field is 540 units high, whatever its pixels.
#pragma once

#include <cstdint>
#include <vector>

namespace shot {

inline constexpr float kFieldHeight = 540;

struct Point {
    float x = 0;
    float y = 0; // downward
};

// Display values, 0 to 1, as they go into the file.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
};

constexpr Color Rgb(std::uint32_t rrggbb) {
    return { static_cast<float>(rrggbb >> 16 & 255) / 255,
             static_cast<float>(rrggbb >> 8 & 255) / 255, static_cast<float>(rrggbb & 255) / 255 };
}
Color Mix(Color from, Color to, float part);
// 0 below `low`, 1 above `high`, smooth between them.
float SmoothStep(float low, float high, float value);
// Clouded values of mean 0 within about -1 to 1, the same for the same point on every machine.
float Noise(Point point, int octaves = 4);
// One value of -1 to 1 for each whole pair.
float Speckle(std::int32_t x, std::int32_t y);

// A line through points, closed or open.
class Outline {
public:
    static Outline Polygon(std::vector<Point> points);
    // A round curve through all the points.
    static Outline Smooth(const std::vector<Point>& points);
    static Outline SmoothOpen(const std::vector<Point>& points);
    static Outline Ellipse(Point center, float radiusX, float radiusY);

    // Turned clockwise about the origin, then scaled, then moved.
    Outline Placed(Point by, float scale = 1, float radians = 0) const;
    const std::vector<Point>& Points() const { return m_points; }
    bool IsClosed() const { return m_closed; }

private:
    Outline(std::vector<Point> points, bool closed);

    std::vector<Point> m_points;
    bool m_closed = true;
};

// How much of each pixel of a rectangle a shape covers, 0 to 1; nothing outside of it.
class Mask {
public:
    Mask() = default;
    Mask(int left, int top, int width, int height);

    int Left() const { return m_left; }
    int Top() const { return m_top; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    float* Row(int y) { return m_values.data() + static_cast<std::ptrdiff_t>(y) * m_width; }
    const float* Row(int y) const {
        return m_values.data() + static_cast<std::ptrdiff_t>(y) * m_width;
    }
    // At a pixel of the canvas.
    float At(int x, int y) const;

    Mask And(const Mask& other) const;
    Mask Without(const Mask& other) const;

private:
    int m_left = 0;
    int m_top = 0;
    int m_width = 0;
    int m_height = 0;
    std::vector<float> m_values;
};

// The pixels of one frame. Used by one thread.
class Canvas {
public:
    Canvas(int width, int height);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    float FieldWidth() const { return static_cast<float>(m_width) / m_scale; }
    const Color& At(int x, int y) const { return m_pixels[Index(x, y)]; }
    Color& At(int x, int y) { return m_pixels[Index(x, y)]; }

    Mask Everything() const;
    Mask Fill(const Outline& outline) const;
    // A stroke of the given width; open ones taper towards their ends, as a pen's do.
    Mask Stroke(const Outline& line, float width) const;
    // The filled outline with an edge that fades over about two radii.
    Mask Soft(const Outline& outline, float radius) const;
    // Coverage from a function of the point, evaluated within a box of field units.
    template <typename Coverage>
    Mask Shape(Point topLeft, Point bottomRight, Coverage coverage) const;

    // The brush gives the colour at a point.
    template <typename Brush>
    void Paint(const Mask& mask, Brush brush, float opacity = 1);
    void Paint(const Mask& mask, Color color, float opacity = 1);

    Point FieldPoint(int x, int y) const {
        return { (static_cast<float>(x) + 0.5F) / m_scale,
                 (static_cast<float>(y) + 0.5F) / m_scale };
    }

private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
               static_cast<std::size_t>(x);
    }
    // The pixels that a box of field units touches, within the canvas.
    Mask Box(Point topLeft, Point bottomRight) const;
    Mask BoxAround(const Outline& outline, float margin) const;

    int m_width;
    int m_height;
    float m_scale; // pixels in a unit
    std::vector<Color> m_pixels;
};

template <typename Coverage>
Mask Canvas::Shape(Point topLeft, Point bottomRight, Coverage coverage) const {
    Mask mask = Box(topLeft, bottomRight);
    for (int y = 0; y < mask.Height(); ++y)
        for (int x = 0; x < mask.Width(); ++x)
            mask.Row(y)[x] = coverage(FieldPoint(mask.Left() + x, mask.Top() + y));
    return mask;
}

template <typename Brush>
void Canvas::Paint(const Mask& mask, Brush brush, float opacity) {
    for (int y = 0; y < mask.Height(); ++y) {
        for (int x = 0; x < mask.Width(); ++x) {
            const float part = mask.Row(y)[x] * opacity;
            if (part <= 0)
                continue;
            Color& pixel = At(mask.Left() + x, mask.Top() + y);
            pixel = Mix(pixel, brush(FieldPoint(mask.Left() + x, mask.Top() + y)), part);
        }
    }
}

} // namespace shot
