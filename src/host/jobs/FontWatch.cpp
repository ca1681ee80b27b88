// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FontWatch.h"

#include <utility>

#include "platform/Fonts.h"
#include "platform/TextEncoding.h"

namespace host {

namespace {

bool IsViolation(platform::ReportKind kind) {
    return kind == platform::ReportKind::kFontSubstituted ||
           kind == platform::ReportKind::kFontBroken || kind == platform::ReportKind::kGlyphMissing;
}

} // namespace

FontWatch::FontWatch(Policy policy, std::function<void(const std::string&)> warn)
    : m_policy(policy), m_warn(std::move(warn)) {
    platform::SetReportHandler([this](const platform::Report& report) { Hear(report); });
}

FontWatch::~FontWatch() {
    platform::SetReportHandler({});
}

void FontWatch::Hear(const platform::Report& report) {
    auto const text = platform::Describe(report);
    if (IsStrict() && IsViolation(report.kind))
        Violate(text);
    else
        m_warn(text);
}

void FontWatch::Violate(const std::string& text) {
    std::lock_guard const lock(m_mutex);
    if (m_violation.empty())
        m_violation = text;
}

void FontWatch::CheckFamily(std::string_view family) {
    if (!IsStrict() || family.empty())
        return;
    auto const name = platform::DecodeText(family);
    auto const resolution = platform::ResolveFontFamily(name);
    if (resolution.match != platform::FontMatch::kInstalled)
        Violate("font '" + name + "' is not installed; " +
                (resolution.family.empty() ? "no font is"
                                           : "'" + resolution.family + "' would stand in for it"));
}

std::string FontWatch::Violation() const {
    std::lock_guard const lock(m_mutex);
    return m_violation;
}

std::unique_lock<std::mutex> FontWatch::Lock() const {
    return IsStrict() ? std::unique_lock(m_drawing) : std::unique_lock<std::mutex>();
}

} // namespace host
