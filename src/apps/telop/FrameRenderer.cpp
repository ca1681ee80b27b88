// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/FrameRenderer.h"

#include <utility>

#include "host/text/TextField.h"

namespace telop {

FrameRenderer::FrameRenderer(const host::Effect& effect, const FrameText& text,
                             host::FrameRanges apply, Placement placement, const FontWatch& fonts)
    : m_effect(effect), m_text(text), m_apply(std::move(apply)), m_placement(placement),
      m_fonts(fonts) {}

RenderResult FrameRenderer::Render(host::Frame& frame, const host::TokenValues& values,
                                   host::PixelRect& touched, std::string& why) const {
    touched = {};
    bool const on = m_apply.Contains(values.frame);
    ResolvedText text;
    // A text that is not drawn may have any length.
    if (on && !m_text.Resolve(values, text, why))
        return RenderResult::kFailed;

    host::FrameInfo info;
    info.apply = on ? 1 : 0;
    info.scale = m_placement.scale;
    info.origin = m_placement.origin;
    for (std::size_t i = 0; i < info.strings.size(); ++i)
        info.strings[i] = host::FieldBytes(text.strings[i]);

    auto const lock = m_fonts.Lock();
    if (!m_effect.RenderWith(text.params, *frame.image, info, why))
        return RenderResult::kFailed;
    if (m_fonts.IsStrict() && !(why = m_fonts.Violation()).empty())
        return RenderResult::kFontViolated;
    if (on)
        touched = { 0, 0, frame.image->Width(), frame.image->Height() };
    return RenderResult::kDone;
}

} // namespace telop
