// SPDX-License-Identifier: BSD-3-Clause
#include "Puff.h"

#include <algorithm>
#include <cmath>

namespace shot {

namespace {

// The heap as a height field: how deep a point lies inside, and which way its surface faces.
class Heap {
public:
    Heap(const std::vector<Ball>& balls, const PuffStyle& style) : m_balls(balls), m_style(style) {}

    // Below 0 inside.
    float Distance(Point point) const {
        float nearest = 1e6F;
        for (const Ball& ball : m_balls)
            nearest =
                std::min(nearest, std::hypot(point.x - ball.center.x, point.y - ball.center.y) -
                                      ball.radius);
        // Far from the edge the answer is known without the noise, which is most of the cost.
        const float reach = m_style.ragged + m_style.softness;
        return std::abs(nearest) > reach ? nearest : nearest + Stray(point);
    }

    // About -1 away from the light, 1 towards it: the balls that stand out at the point, the more the
    // more they do, carry it together, so that no crease shows where two of them meet.
    float Light(Point point) const {
        float sum = 0;
        float weights = 1e-6F;
        for (const Ball& ball : m_balls) {
            const float x = (point.x - ball.center.x) / ball.radius;
            const float y = (point.y - ball.center.y) / ball.radius;
            const float height = std::max(0.0F, 1.25F - x * x - y * y) * ball.radius;
            const float weight = height * height * height;
            sum += weight * (-0.5F * x - 0.9F * y);
            weights += weight;
        }
        return sum / weights + Stray(point) / m_style.grain;
    }

private:
    float Stray(Point point) const {
        return m_style.ragged * 1.6F *
               Noise({ point.x / m_style.grain, point.y / m_style.grain }, 4);
    }

    const std::vector<Ball>& m_balls;
    const PuffStyle& m_style;
};

} // namespace

void PaintPuff(Canvas& canvas, const std::vector<Ball>& balls, Point by, float scale,
               const PuffStyle& style) {
    Point low { 1e6F, 1e6F };
    Point high { -1e6F, -1e6F };
    for (const Ball& ball : balls) {
        const float reach = ball.radius + style.ragged + style.softness;
        low = { std::min(low.x, ball.center.x - reach), std::min(low.y, ball.center.y - reach) };
        high = { std::max(high.x, ball.center.x + reach), std::max(high.y, ball.center.y + reach) };
    }
    const Heap heap(balls, style);
    // The noise belongs to the heap, so that it moves along.
    const auto inHeap = [&](Point point) {
        return Point { (point.x - by.x) / scale, (point.y - by.y) / scale };
    };
    const Mask mask = canvas.Shape(
        { by.x + low.x * scale, by.y + low.y * scale },
        { by.x + high.x * scale, by.y + high.y * scale }, [&](Point point) {
            return SmoothStep(style.softness, -style.softness, heap.Distance(inHeap(point)));
        });
    canvas.Paint(mask, [&](Point point) {
        const float light = heap.Light(inHeap(point));
        const Color shaded = Mix(style.dark, style.middle,
                                 SmoothStep(-0.25F - style.bands, -0.25F + style.bands, light));
        return Mix(shaded, style.light,
                   SmoothStep(0.35F - style.bands, 0.35F + style.bands, light));
    });
}

} // namespace shot
