// SPDX-License-Identifier: BSD-3-Clause
// The picture of a text that is drawn once and blended many times, as the renderer describes one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Cases.h"
#include "platform/Drawing.h"
#include "render/CTextRenderer.h"

namespace bench {

class ReadyPicture {
public:
    explicit ReadyPicture(const TextCase& text);
    ReadyPicture(const ReadyPicture&) = delete;
    ReadyPicture& operator=(const ReadyPicture&) = delete;
    ~ReadyPicture();

    const _RTEXTIMAGE_INFO& Info() const { return m_info; }

private:
    void Measure();
    void Draw(const TextCase& text);
    void SelectFont() const;

    std::vector<std::string> m_lines; // in the application's text encoding
    platform::FontNumber m_font = 0;
    std::int16_t m_sizePx;
    platform::FontInfo m_metrics {};
    std::int16_t m_width = 0;
    platform::GWorldPtr m_world = nullptr;
    _RTEXTIMAGE_INFO m_info {};
};

} // namespace bench
