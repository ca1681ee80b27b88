// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameRenderer.h"

#include <mutex>
#include <utility>

#include "host/text/TextField.h"

namespace host {

FrameRenderer::FrameRenderer(const Effect& effect, const FrameText& text, FrameRanges apply,
                             Placement placement, const FontWatch* fonts)
    : m_effect(effect), m_text(text), m_apply(std::move(apply)), m_placement(placement),
      m_fonts(fonts) {}

RenderResult FrameRenderer::Render(Frame& frame, const TokenValues& values, PixelRect& touched,
                                   std::string& why) const {
    touched = {};
    bool const on = m_apply.Contains(values.frame);
    ResolvedText text;
    // A text that is not drawn may have any length.
    if (on && !m_text.Resolve(values, text, why))
        return RenderResult::kFailed;

    FrameInfo info;
    info.apply = on ? 1 : 0;
    info.scale = m_placement.scale;
    info.origin = m_placement.origin;
    for (std::size_t i = 0; i < info.strings.size(); ++i)
        info.strings[i] = FieldBytes(text.strings[i]);

    auto const lock = m_fonts ? m_fonts->Lock() : std::unique_lock<std::mutex>();
    if (!m_effect.RenderWith(text.params, *frame.image, info, why))
        return RenderResult::kFailed;
    if (m_fonts && m_fonts->IsStrict() && !(why = m_fonts->Violation()).empty())
        return RenderResult::kFontViolated;
    if (on)
        touched = { 0, 0, frame.image->Width(), frame.image->Height() };
    return RenderResult::kDone;
}

} // namespace host
