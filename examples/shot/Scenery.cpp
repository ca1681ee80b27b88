// SPDX-License-Identifier: BSD-3-Clause
#include "Scenery.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "Puff.h"

namespace shot {

namespace {

constexpr float kHorizon = 338;
constexpr float kVerge = 418; // where the field meets the road
constexpr float kRampTop = 524;

// How far each layer moves while the road moves one unit.
constexpr float kSkyPace = 0.03F;
constexpr float kMountainPace = 0.08F;
constexpr float kHillPace = 0.2F;
constexpr float kVillagePace = 0.5F;
constexpr float kFieldPace = 0.75F;

// Calls draw(i, x) for each i whose place, i * apart on a layer that has moved to the left by `shift`,
// comes into view; `margin` is how far a thing reaches beyond its place.
template <typename Draw>
void Along(const Canvas& canvas, float shift, float apart, float margin, Draw draw) {
    const auto first = static_cast<std::int32_t>(std::floor((shift - margin) / apart));
    const auto last =
        static_cast<std::int32_t>(std::ceil((shift + canvas.FieldWidth() + margin) / apart));
    for (std::int32_t i = first; i <= last; ++i)
        draw(i, static_cast<float>(i) * apart - shift);
}

// Paint that was laid on by hand is never one colour.
Color Uneven(Color color, Point point, float size, float amount) {
    const float value = amount * Noise({ point.x / size, point.y / size * 1.8F }, 3);
    return { color.red + value, color.green + value, color.blue + value * 0.6F };
}

void PaintSky(Canvas& canvas) {
    canvas.Paint(
        canvas.Shape({ 0, 0 }, { canvas.FieldWidth(), kHorizon + 30 }, [](Point) { return 1.0F; }),
        [](Point point) {
            const float down =
                point.y / kHorizon + 0.03F * Noise({ point.x / 160, point.y / 40 }, 2);
            const Color upper = Mix(Rgb(0x2F74BD), Rgb(0x79B8E2), SmoothStep(0, 0.6F, down));
            return Mix(upper, Rgb(0xF7EFD8), SmoothStep(0.45F, 1.05F, down));
        });
}

void PaintClouds(Canvas& canvas, float pan) {
    static const std::vector<Ball> kTower { { { -150, 14 }, 34 }, { { -105, -14 }, 48 },
                                            { { -50, -52 }, 62 }, { { 4, -88 }, 58 },
                                            { { 48, -46 }, 66 },  { { 104, -18 }, 50 },
                                            { { 150, 8 }, 38 },   { { 0, 10 }, 62 },
                                            { { -60, 18 }, 44 },  { { 70, 20 }, 44 } };
    static const std::vector<Ball> kBank { { { -90, 4 }, 22 },  { { -52, -10 }, 32 },
                                           { { -8, -22 }, 38 }, { { 36, -8 }, 32 },
                                           { { 78, 4 }, 24 },   { { 0, 8 }, 26 } };
    const PuffStyle near { Rgb(0xFFFDF4), Rgb(0xE3EAF2), Rgb(0xB4C6DC), 5, 11, 34, 0.3F };
    const PuffStyle far { Rgb(0xFFF8E8), Rgb(0xEBEDEC), Rgb(0xC9D6E2), 6, 9, 26, 0.45F };
    const float shift = pan * kSkyPace;
    PaintPuff(canvas, kBank, { 96 - shift, 262 }, 0.9F, far);
    PaintPuff(canvas, kBank, { 505 - shift, 286 }, 0.75F, far);
    PaintPuff(canvas, kTower, { 760 - shift * 1.5F, 258 }, 1.05F, near);
    PaintPuff(canvas, kBank, { 930 - shift * 1.5F, 300 }, 1.1F, near);
}

// Everything below a ridge whose height is a function of the way along it.
template <typename Ridge>
Mask Below(const Canvas& canvas, float pan, Ridge ridge) {
    std::vector<Point> points { { -20, kVerge + 20 } };
    for (int step = -5; step <= static_cast<int>(canvas.FieldWidth() / 4) + 6; ++step) {
        const float x = 4 * static_cast<float>(step);
        points.push_back({ x, ridge(x + pan) });
    }
    points.push_back({ canvas.FieldWidth() + 24, kVerge + 20 });
    return canvas.Fill(Outline::Polygon(std::move(points)));
}

void PaintMountains(Canvas& canvas, float pan) {
    const float shift = pan * kMountainPace;
    const auto far = [](float x) { return kHorizon - 62 - 120 * Noise({ x / 260, 3.5F }, 5); };
    canvas.Paint(Below(canvas, shift, far), [&](Point point) {
        const float slope = Noise({ (point.x + shift) / 60 + point.y / 50, point.y / 44 }, 4);
        const Color rock = Mix(Rgb(0x7FA3C8), Rgb(0x9BBAD6), SmoothStep(-0.1F, 0.15F, slope));
        return Mix(rock, Rgb(0xD9E3E2), SmoothStep(kHorizon - 110, kHorizon + 6, point.y));
    });
    const auto near = [](float x) { return kHorizon - 26 - 78 * Noise({ x / 210, 11.5F }, 5); };
    canvas.Paint(Below(canvas, shift * 1.5F, near), [&](Point point) {
        const float slope =
            Noise({ (point.x + shift * 1.5F) / 38 + point.y / 36, point.y / 30 }, 4);
        const Color wood = Mix(Rgb(0x5B8CA0), Rgb(0x74A3A6), SmoothStep(-0.12F, 0.12F, slope));
        return Mix(wood, Rgb(0xBFD6C4), SmoothStep(kHorizon - 60, kHorizon + 16, point.y));
    });
}

float HillRidge(float x) {
    return kHorizon + 4 - 22 * std::sin(x / 150) - 14 * std::sin(x / 67 + 1);
}

void PaintWoods(Canvas& canvas, float pan) {
    const float shift = pan * kHillPace;
    const PuffStyle style { Rgb(0x8FB564), Rgb(0x5F914F), Rgb(0x3C6E4E), 1.2F, 5, 9, 0.12F };
    Along(canvas, shift, 26, 40, [&](std::int32_t tree, float place) {
        const float x = place + 12 * Speckle(tree, 5);
        const float size = 11 + 4 * Speckle(tree, 6);
        const std::vector<Ball> crown { { { -size, 2 }, size },
                                        { { 0, -size * 0.7F }, size * 1.15F },
                                        { { size, 1 }, size * 0.9F } };
        PaintPuff(canvas, crown, { x, HillRidge(x + shift) + 3 }, 1, style);
    });
    const auto hill = [](float x) { return HillRidge(x) + 6; };
    canvas.Paint(Below(canvas, shift, hill), [&](Point point) {
        const Color grass =
            Mix(Rgb(0x6FA457), Rgb(0x9CC266), SmoothStep(kHorizon, kVerge, point.y));
        return Uneven(grass, { point.x + shift, point.y }, 30, 0.12F);
    });
}

void PaintHouse(Canvas& canvas, Point foot) {
    const auto at = [&](std::vector<Point> points) {
        return Outline::Polygon(std::move(points)).Placed(foot);
    };
    const auto flat = [&](std::vector<Point> points, std::uint32_t color) {
        canvas.Paint(canvas.Fill(at(std::move(points))),
                     [&](Point point) { return Uneven(Rgb(color), point, 14, 0.06F); });
    };
    canvas.Paint(canvas.Soft(at({ { -70, -2 }, { 92, -2 }, { 132, 10 }, { -30, 12 } }), 5),
                 Rgb(0x2F5A3E), 0.55F);
    flat({ { -62, 2 }, { -62, -46 }, { 34, -46 }, { 34, 2 } }, 0xF3E6CC);            // front
    flat({ { 34, 2 }, { 34, -46 }, { 58, -78 }, { 82, -46 }, { 82, 2 } }, 0xBFAFA6); // gable end
    // The eaves throw a shadow on the wall.
    canvas.Paint(canvas.Fill(at({ { -62, -46 }, { 34, -46 }, { 34, -37 }, { -62, -35 } })),
                 Rgb(0x7B6F8A), 0.55F);
    flat({ { -72, -42 }, { -50, -84 }, { 58, -84 }, { 38, -42 } }, 0xB8523A); // roof
    flat({ { 38, -42 }, { 58, -84 }, { 90, -40 }, { 84, -39 }, { 58, -74 }, { 43, -41 } },
         0x74382F);
    for (int row = 0; row < 6; ++row) {
        const float y = -80 + static_cast<float>(row) * 6.6F;
        const float slant = (y + 84) / 42;
        canvas.Paint(canvas.Stroke(Outline::SmoothOpen({ Point { -50 - 22 * slant, y },
                                                         Point { 58 - 20 * slant, y } })
                                       .Placed(foot),
                                   1.1F),
                     Rgb(0x7E3329), 0.6F);
    }
    flat({ { 6, -84 }, { 6, -102 }, { 18, -102 }, { 18, -84 } }, 0xA08578); // chimney
    for (const float x : { -52.0F, -28.0F }) {
        flat({ { x, -12 }, { x, -32 }, { x + 17, -32 }, { x + 17, -12 } }, 0x4D6C86);
        flat({ { x, -24 }, { x, -32 }, { x + 17, -32 }, { x + 8, -24 } }, 0xA9CBDD);
        canvas.Paint(
            canvas.Stroke(at({ { x, -12 }, { x, -32 }, { x + 17, -32 }, { x + 17, -12 } }), 1.6F),
            Rgb(0xFFFBEF));
        canvas.Paint(
            canvas.Stroke(
                Outline::SmoothOpen({ { x + 8.5F, -32 }, { x + 8.5F, -12 } }).Placed(foot), 1.4F),
            Rgb(0xFFFBEF));
    }
    flat({ { 8, 2 }, { 8, -32 }, { 24, -32 }, { 24, 2 } }, 0x6B4A38);
    flat({ { 50, -16 }, { 50, -34 }, { 66, -34 }, { 66, -16 } }, 0x3F566E);
}

void PaintTree(Canvas& canvas, Point foot, float scale) {
    static const std::vector<Ball> kCrown { { { -30, -66 }, 24 }, { { 28, -70 }, 25 },
                                            { { -12, -60 }, 24 }, { { 16, -56 }, 22 },
                                            { { -20, -96 }, 26 }, { { 16, -100 }, 26 },
                                            { { -2, -122 }, 24 }, { { 0, -84 }, 28 } };
    const PuffStyle style { Rgb(0xA9CC5E), Rgb(0x5E9A48), Rgb(0x2F6345), 1, 5, 9, 0.1F };
    canvas.Paint(canvas.Soft(Outline::Ellipse({ 26, 3 }, 56, 8).Placed(foot, scale), 4),
                 Rgb(0x2C5A3C), 0.6F);
    const Outline trunk =
        Outline::Smooth({ { -8, 3 }, { -4, -24 }, { -8, -60 }, { 6, -60 }, { 4, -24 }, { 9, 3 } })
            .Placed(foot, scale);
    canvas.Paint(canvas.Fill(trunk), [&](Point point) {
        return Mix(Rgb(0x8C6547), Rgb(0x4C3832), SmoothStep(-2, 3, (point.x - foot.x) / scale));
    });
    PaintPuff(canvas, kCrown, foot, scale, style);
}

void PaintVillage(Canvas& canvas, float pan) {
    Along(canvas, pan * kVillagePace, 1250, 200, [&canvas](std::int32_t, float x) {
        PaintTree(canvas, { x + 118, 398 }, 1.1F);
        PaintTree(canvas, { x + 410, 404 }, 1.35F);
        PaintHouse(canvas, { x + 650, 398 });
        PaintTree(canvas, { x + 800, 396 }, 0.85F);
        PaintTree(canvas, { x + 872, 399 }, 1.05F);
        PaintTree(canvas, { x + 1075, 400 }, 1.2F);
    });
}

void PaintField(Canvas& canvas, float pan) {
    const float shift = pan * kFieldPace;
    const auto edge = [](float x) { return 402 + 2.5F * std::sin(x / 37); };
    canvas.Paint(Below(canvas, shift, edge), [&](Point point) {
        // Rows of rice run towards the vanishing point.
        const float depth = (point.y - 372) / 46;
        const float row = (point.x + shift - 480) / std::max(0.1F, depth);
        const float stripe = 0.5F + 0.5F * std::sin(row / 7);
        const Color rice = Mix(Rgb(0x7DB34A), Rgb(0xB5D766), stripe * 0.55F);
        return Uneven(rice, { point.x + shift, point.y * 2 }, 12, 0.12F);
    });
}

void PaintRoad(Canvas& canvas, float pan) {
    const float width = canvas.FieldWidth();
    canvas.Paint(
        canvas.Shape({ 0, kVerge + 6 }, { width, kFieldHeight }, [](Point) { return 1.0F; }),
        [&](Point point) {
            const Color asphalt =
                Mix(Rgb(0x9B97A3), Rgb(0x7C7986), SmoothStep(kVerge, kFieldHeight, point.y));
            return Uneven(asphalt, { (point.x + pan) / 3, point.y }, 9, 0.055F);
        });
    const auto band = [&](float x, float length, float top, float height, float lean) {
        return canvas.Fill(Outline::Polygon({ { x, top },
                                              { x + length, top },
                                              { x + length + lean, top + height },
                                              { x + lean, top + height } }));
    };
    canvas.Paint(band(-10, width + 20, kVerge + 12, 3, 0), Rgb(0xECE9E0), 0.9F);
    Along(canvas, pan, 150, 100, [&](std::int32_t, float x) {
        canvas.Paint(band(x, 78, 488, 5.5F, -5), Rgb(0xF2EEDF), 0.9F);
    });
}

// A ragged seam of grass hides where two layers meet.
void PaintVerge(Canvas& canvas, float pan, float foot, float height, Color light, Color dark) {
    Along(canvas, pan, 5, 20, [&](std::int32_t blade, float place) {
        const float x = place + 3 * Speckle(blade, 21);
        const float tall = height * (1 + 0.5F * Speckle(blade, 22));
        const float lean = 5 * Speckle(blade, 23);
        const Outline leaf = Outline::Polygon(
            { { x - 3, foot + 3 }, { x + lean, foot - tall }, { x + 3.4F, foot + 3 } });
        canvas.Paint(canvas.Fill(leaf), Mix(light, dark, 0.5F + 0.5F * Speckle(blade, 24)));
    });
}

constexpr float kPolesApart = 520;

// With the wires to the next one.
void PaintPole(Canvas& canvas, float x) {
    for (const float y : { 62.0F, 80.0F, 110.0F }) {
        const Outline wire = Outline::SmoothOpen({ { x, y },
                                                   { x + kPolesApart * 0.25F, y + 17 },
                                                   { x + kPolesApart * 0.5F, y + 23 },
                                                   { x + kPolesApart * 0.75F, y + 17 },
                                                   { x + kPolesApart, y } });
        canvas.Paint(canvas.Stroke(wire, 1.5F), Rgb(0x3B4050), 0.75F);
    }
    const Outline pole = Outline::Polygon(
        { { x - 4, 40 }, { x + 4, 40 }, { x + 6, kVerge + 14 }, { x - 6, kVerge + 14 } });
    canvas.Paint(canvas.Fill(pole), [x](Point point) {
        return Mix(Rgb(0xA3978C), Rgb(0x5B545C), SmoothStep(-2.5F, 3.5F, point.x - x));
    });
    for (const float y : { 60.0F, 78.0F })
        canvas.Paint(canvas.Fill(Outline::Polygon(
                         { { x - 30, y }, { x + 30, y }, { x + 30, y + 5 }, { x - 30, y + 5 } })),
                     Rgb(0x574F50));
}

} // namespace

void PaintBackground(Canvas& canvas, float pan) {
    PaintSky(canvas);
    PaintClouds(canvas, pan);
    PaintMountains(canvas, pan);
    PaintWoods(canvas, pan);
    PaintVillage(canvas, pan);
    PaintField(canvas, pan);
    PaintRoad(canvas, pan);
    PaintVerge(canvas, pan, kVerge + 8, 9, Rgb(0x9CC857), Rgb(0x4F8A45));
    Along(canvas, pan - 240, kPolesApart, kPolesApart,
          [&canvas](std::int32_t, float x) { PaintPole(canvas, x); });
}

void PaintForeground(Canvas& canvas, float pan) {
    PaintVerge(canvas, pan * 1.3F, kFieldHeight - 4, 26, Rgb(0x5F9444), Rgb(0x27543A));
}

void PaintToneRamp(Canvas& canvas) {
    const float width = canvas.FieldWidth();
    constexpr float kSteps = 16;
    const float middle = (kRampTop + kFieldHeight) / 2;
    canvas.Paint(canvas.Shape({ 0, kRampTop }, { width, kFieldHeight }, [](Point) { return 1.0F; }),
                 [&](Point point) {
                     const float along = point.x / width;
                     const float tone =
                         point.y < middle ? along : std::floor(along * kSteps) / (kSteps - 1);
                     return Color { tone, tone, tone };
                 });
}

void PaintGrain(Canvas& canvas) {
    for (int y = 0; y < canvas.Height(); ++y) {
        for (int x = 0; x < canvas.Width(); ++x) {
            const Point point = canvas.FieldPoint(x, y);
            if (point.y >= kRampTop)
                return;
            const float grain =
                0.008F * Speckle(x, y) + 0.012F * Noise({ point.x / 3, point.y / 3 }, 2);
            Color& pixel = canvas.At(x, y);
            pixel = { pixel.red + grain, pixel.green + grain, pixel.blue + grain };
        }
    }
}

} // namespace shot
