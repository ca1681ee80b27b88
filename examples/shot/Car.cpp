// SPDX-License-Identifier: BSD-3-Clause
#include "Car.h"

#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace shot {

namespace {

constexpr Color kLine = Rgb(0x33262B);
constexpr float kPen = 2.4F;
constexpr float kWheelRadius = 24;
constexpr float kRearAxle = -74;
constexpr float kFrontAxle = 76;

// Paints parts that are drawn around the point of the road below the car.
class Cel {
public:
    Cel(Canvas& canvas, Point foot) : m_canvas(canvas), m_foot(foot) {}

    Mask Fill(const Outline& outline) const { return m_canvas.Fill(outline.Placed(m_foot)); }
    Mask Soft(const Outline& outline, float radius) const {
        return m_canvas.Soft(outline.Placed(m_foot), radius);
    }
    void Flat(const Outline& outline, std::uint32_t color, float opacity = 1) const {
        m_canvas.Paint(Fill(outline), Rgb(color), opacity);
    }
    void Within(const Mask& area, const Outline& outline, std::uint32_t color,
                float opacity = 1) const {
        m_canvas.Paint(Fill(outline).And(area), Rgb(color), opacity);
    }
    void Draw(const Outline& line, float pen = kPen) const {
        m_canvas.Paint(m_canvas.Stroke(line.Placed(m_foot), pen), kLine);
    }
    void Inked(const Outline& outline, std::uint32_t color, float pen = kPen) const {
        Flat(outline, color);
        Draw(outline, pen);
    }

private:
    Canvas& m_canvas;
    Point m_foot;
};

Outline Round(float x, float y, float radius) {
    return Outline::Ellipse({ x, y }, radius, radius);
}

const Outline& Body() {
    static const Outline kBody = Outline::Smooth(
        { { -132, -34 }, { -131, -58 }, { -120, -76 }, { -98, -84 }, { -84, -104 },
          { -64, -126 }, { -34, -133 }, { 0, -133 },   { 26, -126 }, { 44, -106 },
          { 58, -86 },   { 88, -80 },   { 116, -70 },  { 131, -52 }, { 133, -32 },
          { 124, -20 },  { 60, -17 },   { 0, -17 },    { -60, -17 }, { -122, -20 } });
    return kBody;
}

void PaintBody(const Cel& cel) {
    cel.Flat(Body(), 0xEFB02C);
    const Mask body = cel.Fill(Body());
    // Below the waist the sides turn away from the sky; the tail lies in the car's own shadow.
    cel.Within(body,
               Outline::Smooth({ { -150, -50 },
                                 { -110, -46 },
                                 { -30, -50 },
                                 { 60, -46 },
                                 { 112, -52 },
                                 { 150, -40 },
                                 { 150, 0 },
                                 { 0, 10 },
                                 { -150, 0 } }),
               0xC97F24);
    cel.Within(
        body, Outline::Smooth({ { -140, -30 }, { 0, -29 }, { 140, -30 }, { 140, 0 }, { -140, 0 } }),
        0x8F4F2A);
    // Light along the bonnet, the roof and the boot.
    cel.Within(body,
               Outline::Smooth({ { 56, -84 },
                                 { 88, -80 },
                                 { 118, -69 },
                                 { 126, -60 },
                                 { 108, -68 },
                                 { 84, -74 },
                                 { 60, -77 } }),
               0xFFE79C);
    cel.Within(body,
               Outline::Smooth({ { -86, -106 },
                                 { -64, -127 },
                                 { -34, -134 },
                                 { 0, -134 },
                                 { 24, -128 },
                                 { 0, -128 },
                                 { -34, -127 },
                                 { -60, -120 },
                                 { -80, -99 } }),
               0xFFE79C);
    cel.Within(body,
               Outline::Smooth(
                   { { -122, -74 }, { -98, -84 }, { -92, -80 }, { -116, -68 }, { -127, -56 } }),
               0xFFE79C);
}

void PaintDriver(const Cel& cel, const Mask& glass, float bob) {
    const auto lifted = [bob](const Outline& outline) { return outline.Placed({ 0, bob }); };
    cel.Within(glass,
               lifted(Outline::Smooth(
                   { { -16, -70 }, { -14, -92 }, { -2, -98 }, { 14, -94 }, { 20, -70 } })),
               0x3F6FA8);
    cel.Within(glass,
               lifted(Outline::Smooth(
                   { { -16, -70 }, { -14, -92 }, { -8, -95 }, { -4, -84 }, { -4, -70 } })),
               0x2C4E80);
    cel.Within(glass, lifted(Round(4, -106, 10.5F)), 0xF6CFA8);
    cel.Within(glass,
               lifted(Outline::Smooth({ { -8, -99 }, { -2, -104 }, { 3, -97 }, { 0, -94 } })),
               0xD79C7A);
    cel.Within(glass,
               lifted(Outline::Smooth({ { -9, -98 },
                                        { -11, -110 },
                                        { -3, -120 },
                                        { 9, -119 },
                                        { 14, -111 },
                                        { 6, -112 },
                                        { 2, -106 },
                                        { -3, -104 },
                                        { -4, -97 } })),
               0x5A3428);
    cel.Within(glass, lifted(Round(10, -106, 1.5F)), 0x33262B);
    // The arm and the wheel that it holds.
    cel.Within(glass,
               lifted(Outline::Smooth(
                   { { 2, -90 }, { 16, -84 }, { 27, -88 }, { 28, -83 }, { 16, -77 }, { 0, -82 } })),
               0x3F6FA8);
    cel.Within(glass, Outline::Smooth({ { 25, -92 }, { 29, -93 }, { 35, -74 }, { 31, -73 } }),
               0x33262B);
}

void PaintWindows(const Cel& cel, float bob) {
    const Outline rear = Outline::Smooth({ { -80, -86 },
                                           { -72, -102 },
                                           { -58, -119 },
                                           { -40, -124 },
                                           { -34, -122 },
                                           { -33, -104 },
                                           { -33, -88 },
                                           { -38, -85 },
                                           { -58, -84 } });
    const Outline front = Outline::Smooth({ { -24, -122 },
                                            { -8, -125 },
                                            { 10, -123 },
                                            { 24, -117 },
                                            { 36, -101 },
                                            { 44, -88 },
                                            { 40, -85 },
                                            { 8, -84 },
                                            { -20, -85 },
                                            { -25, -88 },
                                            { -25, -104 } });
    for (const Outline& window : { rear, front }) {
        cel.Flat(window, 0x8DB9CC);
        const Mask glass = cel.Fill(window);
        cel.Within(glass,
                   Outline::Polygon({ { -90, -80 }, { -90, -98 }, { 60, -98 }, { 60, -80 } }),
                   0x6C98B2);
        cel.Within(glass,
                   Outline::Smooth(
                       { { -70, -80 }, { -68, -104 }, { -56, -106 }, { -48, -98 }, { -44, -80 } }),
                   0x5E4A52);
        PaintDriver(cel, glass, bob);
        // The sky in the glass.
        cel.Within(glass,
                   Outline::Polygon({ { -66, -84 }, { -40, -130 }, { -30, -130 }, { -56, -84 } }),
                   0xFFFFFF, 0.4F);
        cel.Within(glass,
                   Outline::Polygon({ { -22, -84 }, { 4, -130 }, { 9, -130 }, { -17, -84 } }),
                   0xFFFFFF, 0.35F);
        cel.Draw(window);
    }
}

void PaintFittings(const Cel& cel) {
    cel.Draw(Outline::SmoothOpen({ { -29, -84 }, { -30, -60 }, { -31, -38 }, { -28, -24 } }), 1.8F);
    cel.Draw(Outline::SmoothOpen({ { 47, -84 }, { 50, -66 }, { 47, -46 }, { 40, -30 } }), 1.8F);
    cel.Draw(
        Outline::SmoothOpen({ { -128, -62 }, { -80, -66 }, { 0, -66 }, { 70, -64 }, { 122, -58 } }),
        1.4F);
    cel.Inked(Outline::Smooth({ { -22, -60 }, { -8, -61 }, { -7, -57 }, { -22, -56 } }), 0xE9EEF0,
              1.5F);
    // Lamps.
    cel.Inked(Outline::Ellipse({ 123, -56 }, 8, 10), 0xFFF6D2, 2);
    cel.Flat(Outline::Ellipse({ 125, -59 }, 3, 4), 0xFFFFFF);
    cel.Inked(Outline::Smooth({ { -132, -62 }, { -123, -64 }, { -122, -48 }, { -131, -46 } }),
              0xC33A2C, 2);
    // Bumpers.
    for (const auto& [from, to] : { std::pair { 98.0F, 140.0F }, std::pair { -140.0F, -98.0F } }) {
        const Outline bumper = Outline::Smooth({ { from, -34 },
                                                 { to, -34 },
                                                 { to + 2, -28 },
                                                 { to, -23 },
                                                 { from, -23 },
                                                 { from - 2, -28 } });
        cel.Inked(bumper, 0xCBD3DA, 2);
        cel.Within(cel.Fill(bumper),
                   Outline::Polygon(
                       { { from - 4, -28 }, { to + 4, -28 }, { to + 4, -20 }, { from - 4, -20 } }),
                   0x8792A2);
    }
}

void PaintLuggage(const Cel& cel) {
    const Outline suitcase = Outline::Smooth({ { -58, -141 },
                                               { -59, -160 },
                                               { -54, -165 },
                                               { -6, -165 },
                                               { -1, -160 },
                                               { -2, -141 },
                                               { -8, -139 },
                                               { -52, -139 } });
    cel.Flat(suitcase, 0xA9643C);
    const Mask leather = cel.Fill(suitcase);
    cel.Within(leather,
               Outline::Polygon({ { -64, -149 }, { 2, -149 }, { 2, -136 }, { -64, -136 } }),
               0x77422F);
    for (const float x : { -46.0F, -18.0F })
        cel.Within(leather,
                   Outline::Polygon({ { x, -170 }, { x + 6, -170 }, { x + 6, -130 }, { x, -130 } }),
                   0x4F2C27);
    cel.Draw(suitcase);
    const Outline roll = Outline::Ellipse({ 14, -149 }, 13, 10);
    cel.Flat(roll, 0x4F8F86);
    cel.Within(cel.Fill(roll), Outline::Ellipse({ 17, -144 }, 13, 9), 0x2F6468);
    cel.Draw(roll);
    for (const float y : { -138.0F, -134.0F })
        cel.Draw(Outline::SmoothOpen({ { -68, y + 1 }, { -20, y }, { 32, y + 1 } }), 2.6F);
    for (const float x : { -60.0F, -20.0F, 20.0F })
        cel.Draw(Outline::SmoothOpen({ { x, -139 }, { x, -131 } }), 3);
}

void PaintWheel(const Cel& cel, float axle, float turn) {
    const float y = -kWheelRadius;
    cel.Flat(Outline::Ellipse({ axle, y - 4 }, kWheelRadius + 6, kWheelRadius + 5), 0x2A2026);
    cel.Inked(Round(axle, y, kWheelRadius), 0x3A383F);
    cel.Within(cel.Fill(Round(axle, y, kWheelRadius))
                   .Without(cel.Fill(Round(axle - 3, y - 4, kWheelRadius - 2))),
               Round(axle, y, kWheelRadius), 0x232127);
    cel.Inked(Round(axle, y, 13.5F), 0xE4E8EA, 1.8F);
    const Mask cap = cel.Fill(Round(axle, y, 13));
    cel.Within(cap, Round(axle + 5, y + 7, 12), 0xA6B0BD);
    for (int slot = 0; slot < 5; ++slot) {
        const float angle = turn + 2 * std::numbers::pi_v<float> * static_cast<float>(slot) / 5;
        cel.Within(cap, Outline::Ellipse({ 8.2F, 0 }, 1.7F, 2.5F).Placed({ axle, y }, 1, angle),
                   0x4A4A55);
    }
    cel.Inked(Round(axle, y, 3.6F), 0xF6D36A, 1.4F);
}

} // namespace

void PaintCar(Canvas& canvas, Point foot, float travelled) {
    const float bob = 1.6F * std::sin(travelled / 21);
    const Cel ground(canvas, foot);
    canvas.Paint(ground.Soft(Outline::Ellipse({ 12, 2 }, 146, 10), 5), Rgb(0x2E2A42), 0.62F);
    const Cel sprung(canvas, { foot.x, foot.y + bob });
    PaintLuggage(sprung);
    PaintBody(sprung);
    sprung.Draw(Body(), kPen + 0.6F);
    PaintWindows(sprung, 0.7F * std::sin(travelled / 21 - 1));
    PaintFittings(sprung);
    for (const float axle : { kRearAxle, kFrontAxle })
        PaintWheel(ground, axle, travelled / kWheelRadius);
}

} // namespace shot
