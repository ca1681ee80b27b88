// SPDX-License-Identifier: BSD-3-Clause
#include "ReadyPicture.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "platform/TextEncoding.h"

namespace bench {

namespace {

platform::GWorldPtr MakeWorld(std::int16_t width, std::int16_t height) {
    platform::GWorldPtr world = nullptr;
    if (platform::NewGWorld(&world, 32, { 0, 0, height, width }) != platform::kNoErr)
        throw std::runtime_error("no drawing world");
    return world;
}

std::vector<std::string> EncodedLines(const TextCase& text) {
    platform::SetApplicationTextEncoding(text.encoding);
    std::istringstream bytes(CountedText(text.text).Bytes());
    std::vector<std::string> lines;
    for (std::string line; std::getline(bytes, line);)
        lines.push_back(platform::EncodeText(line).bytes);
    return lines;
}

platform::FontNumber FontNumberOf(std::string name) {
    name.insert(name.begin(), static_cast<char>(name.size()));
    platform::FontNumber number = 0;
    platform::GetFNum(reinterpret_cast<const std::uint8_t*>(name.data()), &number);
    return number;
}

} // namespace

ReadyPicture::ReadyPicture(const TextCase& text)
    : m_lines(EncodedLines(text)), m_font(FontNumberOf(text.family)),
      m_sizePx(static_cast<std::int16_t>(text.sizePx)) {
    Measure();
    Draw(text);
}

ReadyPicture::~ReadyPicture() {
    platform::UnlockPixels(platform::GetGWorldPixMap(m_world));
    platform::DisposeGWorld(m_world);
}

void ReadyPicture::SelectFont() const {
    platform::TextFont(m_font);
    platform::TextSize(m_sizePx);
}

void ReadyPicture::Measure() {
    const platform::GWorldPtr world = MakeWorld(256, 256);
    platform::SetGWorld(world, nullptr);
    SelectFont();
    platform::GetFontInfo(&m_metrics);
    for (const std::string& line : m_lines) {
        const auto width =
            platform::TextWidth(line.data(), 0, static_cast<std::int32_t>(line.size()));
        m_width = std::max(m_width, static_cast<std::int16_t>(width));
    }
    platform::SetGWorld(nullptr, nullptr);
    platform::DisposeGWorld(world);
}

void ReadyPicture::Draw(const TextCase& text) {
    const int lineHeight = m_metrics.ascent + m_metrics.descent;
    const auto height = static_cast<std::int16_t>(lineHeight * static_cast<int>(m_lines.size()));
    m_world = MakeWorld(m_width, height);
    platform::SetGWorld(m_world, nullptr);
    SelectFont();
    platform::RGBForeColor(text.box ? platform::RGBColor { 0xFFFF, 0xFFFF, 0xFFFF }
                                    : platform::RGBColor { 0, 0, 0 });
    platform::RGBBackColor(text.box ? platform::RGBColor { 0, 0, 0 }
                                    : platform::RGBColor { 0xFEFE, 0xFEFE, 0xFEFE });
    platform::EraseRect({ 0, 0, height, m_width });
    int baseline = m_metrics.ascent;
    for (const std::string& line : m_lines) {
        platform::MoveTo(0, static_cast<std::int16_t>(baseline));
        platform::DrawText(line.data(), 0, static_cast<std::int32_t>(line.size()));
        baseline += lineHeight;
    }
    platform::SetGWorld(nullptr, nullptr);
    const platform::PixMapHandle pixels = platform::GetGWorldPixMap(m_world);
    if (!platform::LockPixels(pixels))
        throw std::runtime_error("no memory for a picture");
    m_info = { m_width, height, platform::GetPixRowBytes(pixels), platform::GetPixBaseAddr(pixels),
               kTextImageXrgb32 | kTextImageTopDown };
}

} // namespace bench
