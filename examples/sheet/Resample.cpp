// SPDX-License-Identifier: BSD-3-Clause
#include "Resample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace sheet {

namespace {

constexpr std::size_t kChannels = 3;

// IEC 61966-2-1, both ways; values 0 to 1.
float ToLinear(float value) {
    return value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
}

float ToDisplay(float value) {
    return value <= 0.0031308F ? value * 12.92F : 1.055F * std::pow(value, 1 / 2.4F) - 0.055F;
}

// The cubic of Catmull and Rom, which is 0 from 2 on.
float Cubic(float x) {
    x = std::abs(x);
    if (x < 1)
        return 1 + x * x * (1.5F * x - 2.5F);
    return x < 2 ? 2 + x * (-4 + x * (2.5F - 0.5F * x)) : 0;
}

// What one pixel of the result takes from consecutive pixels of the source. The weights add up to 1.
struct Tap {
    std::int32_t first = 0;
    std::vector<float> weights;
};

// When the result is smaller, the filter is stretched to cover all that goes into one pixel.
std::vector<Tap> Taps(std::int32_t from, std::int32_t to) {
    const float step = static_cast<float>(from) / static_cast<float>(to);
    const float stretch = std::max(1.0F, step);
    std::vector<Tap> taps(static_cast<std::size_t>(to));
    for (std::size_t i = 0; i < taps.size(); ++i) {
        const float center = (static_cast<float>(i) + 0.5F) * step - 0.5F;
        const auto low = static_cast<std::int32_t>(std::ceil(center - 2 * stretch));
        const auto high = static_cast<std::int32_t>(std::floor(center + 2 * stretch));
        Tap& tap = taps[i];
        tap.first = std::clamp(low, 0, from - 1);
        const std::int32_t count = std::clamp(high, 0, from - 1) - tap.first + 1;
        tap.weights.resize(static_cast<std::size_t>(count));
        float sum = 0;
        for (std::int32_t x = low; x <= high; ++x)
            sum += Cubic((static_cast<float>(x) - center) / stretch);
        // What would lie beyond the edge is the edge's pixel once more.
        for (std::int32_t x = low; x <= high; ++x)
            tap.weights[static_cast<std::size_t>(std::clamp(x, 0, from - 1) - tap.first)] +=
                Cubic((static_cast<float>(x) - center) / stretch) / sum;
    }
    return taps;
}

// Rows of linear red, green and blue.
struct Plane {
    Plane(std::int32_t columns, std::int32_t rows)
        : width(static_cast<std::size_t>(columns)), height(static_cast<std::size_t>(rows)),
          values(width * height * kChannels) {}
    float* Row(std::size_t y) { return values.data() + y * width * kChannels; }
    const float* Row(std::size_t y) const { return values.data() + y * width * kChannels; }

    std::size_t width;
    std::size_t height;
    std::vector<float> values;
};

template <typename Channel>
void ReadRow(const host::Image& picture, std::int32_t y, float* row) {
    static const std::vector<float> kLinear = [] {
        constexpr std::size_t kValues = std::size_t { 1 } << (8 * sizeof(Channel));
        std::vector<float> table(kValues);
        for (std::size_t i = 0; i < kValues; ++i)
            table[i] = ToLinear(static_cast<float>(i) / static_cast<float>(kValues - 1));
        return table;
    }();
    const host::PixelFormat& format = picture.Format();
    const std::array<std::int32_t, kChannels> order { format.red, format.green, format.blue };
    const std::uint8_t* pixel = picture.Row(y).data();
    for (std::int32_t x = 0; x < picture.Width(); ++x, pixel += format.BytesPerPixel()) {
        for (const std::int32_t channel : order) {
            Channel value;
            std::memcpy(&value, pixel + static_cast<std::size_t>(channel) * sizeof value,
                        sizeof value);
            *row++ = kLinear[value];
        }
    }
}

Plane Read(const host::Image& picture) {
    Plane plane(picture.Width(), picture.Height());
    for (std::int32_t y = 0; y < picture.Height(); ++y) {
        float* row = plane.Row(static_cast<std::size_t>(y));
        if (picture.Format().BytesPerChannel() == 2)
            ReadRow<std::uint16_t>(picture, y, row);
        else
            ReadRow<std::uint8_t>(picture, y, row);
    }
    return plane;
}

Plane Narrow(const Plane& plane, std::int32_t width) {
    const std::vector<Tap> taps = Taps(static_cast<std::int32_t>(plane.width), width);
    Plane result(width, static_cast<std::int32_t>(plane.height));
    for (std::size_t y = 0; y < plane.height; ++y) {
        float* to = result.Row(y);
        for (const Tap& tap : taps) {
            const float* from = plane.Row(y) + static_cast<std::size_t>(tap.first) * kChannels;
            for (const float weight : tap.weights)
                for (std::size_t channel = 0; channel < kChannels; ++channel)
                    to[channel] += weight * *from++;
            to += kChannels;
        }
    }
    return result;
}

Plane Flatten(const Plane& plane, std::int32_t height) {
    const std::vector<Tap> taps = Taps(static_cast<std::int32_t>(plane.height), height);
    Plane result(static_cast<std::int32_t>(plane.width), height);
    for (std::size_t y = 0; y < taps.size(); ++y) {
        float* to = result.Row(y);
        auto source = static_cast<std::size_t>(taps[y].first);
        for (const float weight : taps[y].weights) {
            const float* from = plane.Row(source++);
            for (std::size_t i = 0; i < plane.width * kChannels; ++i)
                to[i] += weight * from[i];
        }
    }
    return result;
}

} // namespace

std::unique_ptr<host::Image> Resample(const host::Image& picture, std::int32_t width,
                                      std::int32_t height) {
    std::unique_ptr<host::Image> image = host::Image::Make(width, height, host::kRgb24);
    if (!image)
        return nullptr;
    const Plane plane = Flatten(Narrow(Read(picture), width), height);
    for (std::size_t y = 0; y < plane.height; ++y) {
        std::uint8_t* to = image->Row(static_cast<std::int32_t>(y)).data();
        const float* from = plane.Row(y);
        for (std::size_t i = 0; i < plane.width * kChannels; ++i)
            to[i] = static_cast<std::uint8_t>(
                std::lround(255 * ToDisplay(std::clamp(from[i], 0.0F, 1.0F))));
    }
    return image;
}

} // namespace sheet
