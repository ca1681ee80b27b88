// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameRenderer.h"

#include <algorithm>
#include <limits>

namespace host {

namespace {

std::int32_t FarSide(std::int32_t corner, std::int32_t extent) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(std::int64_t { corner } + extent, kMost));
}

} // namespace

bool IsFontViolation(const platform::Report& report) {
    return report.kind == platform::ReportKind::kFontSubstituted ||
           report.kind == platform::ReportKind::kFontBroken ||
           report.kind == platform::ReportKind::kGlyphMissing ||
           report.kind == platform::ReportKind::kInkCut;
}

FrameRenderer::FrameRenderer(const Effect& effect, const ShotText& text, platform::TextContext& run,
                             View view, FontPolicy fonts)
    : m_effect(effect), m_text(text), m_run(run), m_view(view), m_fonts(fonts), m_meter(effect) {}

bool FrameRenderer::Place(const TrackText& text, const FrameText& words, Extent frame,
                          const TokenValues& values, Measured measured, Placed& placed,
                          std::string& why) const {
    auto& params = placed.text.params;
    if (!words.Resolve(values, placed.text, why))
        return false;
    platform::TextContext::Current().UseTabularDigits(placed.text.counts != 0);
    const auto& track = text.TheTrack();
    double scale = 1;
    if (track.referenceHeight > 0) {
        scale = static_cast<double>(frame.height) / track.referenceHeight;
        ScaleToFrame(params, track.referenceHeight, frame.height);
    }
    const bool isFree = track.anchor.place == AnchorPlace::kNone;
    if ((!isFree || measured == Measured::kAlways) &&
        !m_meter.Measure(placed.text, placed.extent, why))
        return false;
    if (isFree)
        placed.view = m_view;
    else
        params.ptPos = CornerAt(track.anchor, placed.extent, frame, scale);
    return true;
}

bool FrameRenderer::Draw(const TrackText& track, const FrameText& text, Image& image,
                         const TokenValues& values, std::string& why) const {
    Placed placed;
    if (!Place(track, text, { image.Width(), image.Height() }, values, Measured::kWhereNeeded,
               placed, why))
        return false;
    auto info = FrameInfoOf(placed.text);
    info.scale = placed.view.scale;
    info.origin = placed.view.origin;
    return m_effect.RenderWith(placed.text.params, image, info, why);
}

std::vector<TextRect> FrameRenderer::Places(Extent frame, const TokenValues& values) const {
    // What is met here is told when the text is drawn.
    platform::TextContext quiet(m_run, {});
    const platform::TextScope scope(quiet);
    std::vector<TextRect> places;
    for (const auto& track : m_text.Tracks()) {
        const auto* const text = track.At(values.frame);
        Placed placed;
        std::string ignored;
        if (!text || !Place(track, *text, frame, values, Measured::kAlways, placed, ignored) ||
            placed.extent.width <= 0 || placed.extent.height <= 0)
            continue;
        const auto corner = placed.text.params.ptPos;
        places.push_back({ track.Index(),
                           { corner.x, corner.y, FarSide(corner.x, placed.extent.width),
                             FarSide(corner.y, placed.extent.height) } });
    }
    return places;
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
