// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameRenderer.h"

#include <algorithm>

namespace host {

bool IsFontViolation(const platform::Report& report) {
    return report.kind == platform::ReportKind::kFontSubstituted ||
           report.kind == platform::ReportKind::kFontBroken ||
           report.kind == platform::ReportKind::kGlyphMissing ||
           report.kind == platform::ReportKind::kInkCut;
}

FrameRenderer::FrameRenderer(const Effect& effect, const ShotText& text, platform::TextContext& run,
                             View view, FontPolicy fonts)
    : m_effect(effect), m_text(text), m_run(run), m_view(view), m_fonts(fonts), m_meter(effect) {}

bool FrameRenderer::Draw(const TrackText& text, const FrameText& words, Image& image,
                         const TokenValues& values, std::string& why) const {
    ResolvedText resolved;
    if (!words.Resolve(values, resolved, why))
        return false;
    platform::TextContext::Current().UseTabularDigits(resolved.counts != 0);
    const auto& track = text.TheTrack();
    const Extent frame { image.Width(), image.Height() };
    double scale = 1;
    if (track.referenceHeight > 0) {
        scale = static_cast<double>(frame.height) / track.referenceHeight;
        ScaleToFrame(resolved.params, track.referenceHeight, frame.height);
    }
    auto info = FrameInfoOf(resolved);
    if (track.anchor.place == AnchorPlace::kNone) {
        info.scale = m_view.scale;
        info.origin = m_view.origin;
    } else {
        Extent extent;
        if (!m_meter.Measure(resolved, extent, why))
            return false;
        resolved.params.ptPos = CornerAt(track.anchor, extent, frame, scale);
    }
    return m_effect.RenderWith(resolved.params, image, info, why);
}

RenderResult FrameRenderer::Render(Frame& frame, const TokenValues& values, PixelRect& touched,
                                   std::string& why) const {
    touched = {};
    platform::TextContext met(m_run,
                              [this](const platform::Report& report) { m_run.Tell(report); });
    const platform::TextScope scope(met);
    bool drawn = true;
    for (const auto& track : m_text.Tracks())
        if (const auto* text = track.At(values.frame); text && drawn) {
            drawn = Draw(track, *text, *frame.image, values, why);
            touched = { 0, 0, frame.image->Width(), frame.image->Height() };
        }
    const auto reports = met.Reports();
    const auto violation = std::find_if(reports.begin(), reports.end(), IsFontViolation);
    if (m_fonts == FontPolicy::kStrict && violation != reports.end()) {
        why = platform::Describe(*violation);
        return RenderResult::kFontViolated;
    }
    return drawn ? RenderResult::kDone : RenderResult::kFailed;
}

} // namespace host
