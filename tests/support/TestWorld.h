// SPDX-License-Identifier: BSD-3-Clause
// A drawing world for tests, current while it lives, whose pixels compare as numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/Drawing.h"

namespace test {

class TestWorld {
public:
    TestWorld(std::int16_t width, std::int16_t height) : m_width(width), m_height(height) {
        platform::GetGWorld(&m_port, &m_device);
        EXPECT_EQ(platform::NewGWorld(&m_world, 32, { 0, 0, height, width }), platform::kNoErr);
        platform::SetGWorld(m_world, nullptr);
    }
    ~TestWorld() {
        platform::SetGWorld(m_port, m_device);
        platform::DisposeGWorld(m_world);
    }
    TestWorld(const TestWorld&) = delete;
    TestWorld& operator=(const TestWorld&) = delete;

    platform::PixMapHandle Map() const { return platform::GetGWorldPixMap(m_world); }
    platform::GWorldPtr World() const { return m_world; }

    void Erase() const { platform::EraseRect({ 0, 0, m_height, m_width }); }

    // Rows of 0xRRGGBB; the unused byte of each pixel is checked to be 0.
    std::vector<std::uint32_t> Pixels() const {
        std::vector<std::uint32_t> pixels;
        EXPECT_TRUE(platform::LockPixels(Map()));
        const std::uint8_t* row = platform::GetPixBaseAddr(Map());
        bool unused = false;
        for (int y = 0; y < m_height; ++y, row += platform::GetPixRowBytes(Map())) {
            for (int x = 0; x < m_width; ++x) {
                const std::uint8_t* const pixel = row + std::ptrdiff_t { 4 } * x;
                unused = unused || pixel[0] != 0;
                pixels.push_back((pixel[1] << 16) | (pixel[2] << 8) | pixel[3]);
            }
        }
        EXPECT_FALSE(unused);
        platform::UnlockPixels(Map());
        return pixels;
    }

private:
    std::int16_t m_width, m_height;
    platform::CGrafPtr m_port = nullptr;
    platform::GDHandle m_device = nullptr;
    platform::GWorldPtr m_world = nullptr;
};

inline void Draw(std::int16_t x, std::int16_t y, const std::string& text) {
    platform::MoveTo(x, y);
    platform::DrawText(text.data(), 0, static_cast<std::int32_t>(text.size()));
}

// Into the current port.
inline void UseFont(const std::string& name, std::int16_t size) {
    const std::string counted = static_cast<char>(name.size()) + name;
    platform::FontNumber number = 0;
    platform::GetFNum(reinterpret_cast<const std::uint8_t*>(counted.data()), &number);
    platform::TextFont(number);
    platform::TextSize(size);
}

inline std::int32_t WidthOf(const std::string& text) {
    return platform::TextWidth(text.data(), 0, static_cast<std::int32_t>(text.size()));
}

} // namespace test
