// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameRenderer.h"

#include <algorithm>
#include <utility>

#include "host/text/TextField.h"

namespace host {

bool IsFontViolation(const platform::Report& report) {
    return report.kind == platform::ReportKind::kFontSubstituted ||
           report.kind == platform::ReportKind::kFontBroken ||
           report.kind == platform::ReportKind::kGlyphMissing;
}

FrameRenderer::FrameRenderer(const Effect& effect, const FrameText& text,
                             platform::TextContext& run, FrameRanges apply, Placement placement,
                             FontPolicy fonts)
    : m_effect(effect), m_text(text), m_run(run), m_apply(std::move(apply)), m_placement(placement),
      m_fonts(fonts) {}

RenderResult FrameRenderer::Render(Frame& frame, const TokenValues& values, PixelRect& touched,
                                   std::string& why) const {
    touched = {};
    platform::TextContext met(m_run,
                              [this](const platform::Report& report) { m_run.Tell(report); });
    const platform::TextScope scope(met);
    const bool on = m_apply.Contains(values.frame);
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

    const bool drawn = m_effect.RenderWith(text.params, *frame.image, info, why);
    const auto reports = met.Reports();
    const auto violation = std::find_if(reports.begin(), reports.end(), IsFontViolation);
    if (m_fonts == FontPolicy::kStrict && violation != reports.end()) {
        why = platform::Describe(*violation);
        return RenderResult::kFontViolated;
    }
    if (!drawn)
        return RenderResult::kFailed;
    if (on)
        touched = { 0, 0, frame.image->Width(), frame.image->Height() };
    return RenderResult::kDone;
}

} // namespace host
