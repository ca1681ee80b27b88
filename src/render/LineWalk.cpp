// SPDX-License-Identifier: BSD-3-Clause
// The walk over lines, and what the renderer offers of it.
#include "render/LineWalk.h"

#include <cstring>

#include "platform/TextEncoding.h"
#include "render/CTextRenderer.h"

std::size_t CharacterStep(std::string_view text) {
    // At the start of a character every encoding of the system means ASCII by these.
    const bool ascii = static_cast<unsigned char>(text[0]) < 0x80;
    return ascii ? 1 : platform::CharacterLength(text);
}

bool LineWalk::Next(std::string_view* line) {
    if (m_done)
        return false;
    std::size_t at = 0;
    while (at < m_rest.size() && m_rest[at] != '\r')
        at += CharacterStep(m_rest.substr(at));
    *line = m_rest.substr(0, at);
    m_done = at >= m_rest.size();
    if (!m_done)
        m_rest.remove_prefix(at + (m_rest.substr(at, 2) == "\r\n" ? 2 : 1));
    return true;
}

bool CTextRenderer::IsDoubleByte(const char* text, unsigned long offset) {
    return platform::CharacterByteType(text, offset, platform::kSystemScript) !=
           platform::kSingleByte;
}

long CTextRenderer::GetLineCount(const char* text) {
    LineWalk walk(text);
    long count = 0;
    for (std::string_view line; walk.Next(&line);)
        ++count;
    return count;
}

void CTextRenderer::GetLineText(char* out, const char* text, long index) {
    out[0] = '\0';
    LineWalk walk(text);
    std::string_view line;
    for (long i = 0; walk.Next(&line); ++i) {
        if (i < index)
            continue;
        if (i == index) {
            std::memcpy(out, line.data(), line.size());
            out[line.size()] = '\0';
        }
        return;
    }
}
