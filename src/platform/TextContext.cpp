// SPDX-License-Identifier: BSD-3-Clause
#include "platform/TextContext.h"

#include <algorithm>
#include <map>
#include <new>

#include "platform/Languages.h"

namespace platform {
namespace {

thread_local TextContext* t_current = nullptr;

const char* Noun(ReportKind kind) {
    switch (kind) {
    case ReportKind::kFontSubstituted:
        return "font family";
    case ReportKind::kFontBroken:
        return "font file";
    case ReportKind::kGlyphMissing:
    case ReportKind::kInkCut:
        return "character";
    case ReportKind::kTextMalformed:
        return "text bytes";
    case ReportKind::kTextNotDrawn:
        break;
    case ReportKind::kBundleBroken:
        return "bundle file";
    }
    return "the text is not drawn";
}

} // namespace

std::string Describe(const Report& report) {
    // Characters and bytes stand in a notation of their own and need no quotes.
    const bool isNamed = report.kind != ReportKind::kGlyphMissing &&
                         report.kind != ReportKind::kInkCut &&
                         report.kind != ReportKind::kTextMalformed;
    const char* const quote = isNamed ? "'" : "";
    std::string line = Noun(report.kind);
    if (!report.asked.empty())
        line += " " + (quote + report.asked) + quote;
    line += ": " + report.reason;
    if (!report.used.empty())
        line += "; using " + (quote + report.used) + quote + " instead";
    return line;
}

const FontFallbacks& FontFallbacks::Of(const std::vector<std::string>& families) {
    static const FontFallbacks none;
    if (families.empty())
        return none;
    // Never destroyed: threads may still draw while the process ends.
    static auto& mutex = *new std::mutex;
    static auto& known = *new std::map<std::vector<std::string>, FontFallbacks>;
    const std::lock_guard lock(mutex);
    const auto [entry, isNew] = known.try_emplace(families);
    if (isNew)
        entry->second = { families, static_cast<std::uint32_t>(known.size()) };
    return entry->second;
}

TextContext::TextContext() : TextContext(Current(), {}) {}

TextContext::TextContext(const TextContext& outer, Handler handler)
    : m_encoding(&outer.Encoding().Details()), m_language(outer.m_language),
      m_fallbacks(outer.m_fallbacks), m_tabularDigits(outer.HasTabularDigits()),
      m_handler(std::move(handler)) {}

TextContext::TextContext(TextEncoding encoding, Handler handler, std::string language,
                         const std::vector<std::string>& fallbacks)
    : m_encoding(&encoding.Details()),
      m_language(language.empty() ? Current().m_language : std::move(language)),
      m_fallbacks(&FontFallbacks::Of(fallbacks)), m_handler(std::move(handler)) {}

// Never destroyed: modules report while a process ends.
TextContext& TextContext::TheProcess() {
    static auto* const context = new TextContext(OfProcess {});
    return *context;
}

TextContext& TextContext::Current() {
    return t_current ? *t_current : TheProcess();
}

TextEncoding TextContext::Encoding() const {
    const EncodingDetails* encoding = m_encoding.load(std::memory_order_acquire);
    if (!encoding) {
        const EncodingDetails* const initial = &TextEncoding::OfEnvironment().Details();
        // Another thread may have set one meanwhile; that one counts.
        encoding = m_encoding.compare_exchange_strong(encoding, initial) ? initial : encoding;
    }
    return TextEncoding(*encoding);
}

std::vector<std::string> TextContext::Languages() const {
    return m_language.empty() ? UserLanguages() : LanguagesOf(m_language);
}

std::string TextContext::Language() const {
    return LocalesOf(Languages());
}

std::string TextContext::IdeographLanguage() const {
    return m_language.empty() ? UserIdeographLanguage() : IdeographLanguageOf(m_language);
}

void TextContext::Tell(const Report& report) {
    if (report.kind == ReportKind::kTextNotDrawn)
        m_notDrawn = true;
    {
        const std::lock_guard lock(m_mutex);
        std::pair subject(report.kind, report.asked);
        if (m_reports.size() >= kMaxReports || m_subjects.contains(subject))
            return;
        m_reports.push_back(report);
        m_subjects.insert(std::move(subject));
    }
    if (m_handler)
        m_handler(report);
}

void TextContext::TellNotDrawn(std::string_view reason) noexcept {
    m_notDrawn = true;
    try {
        Tell({ ReportKind::kTextNotDrawn, "", "", std::string(reason) });
    } catch (const std::bad_alloc&) { // Failure has words for it
    }
}

std::vector<Report> TextContext::Reports() const {
    const std::lock_guard lock(m_mutex);
    return m_reports;
}

std::string TextContext::Failure() const {
    if (!m_notDrawn)
        return {};
    const std::lock_guard lock(m_mutex);
    const auto why = std::find_if(m_reports.begin(), m_reports.end(), [](const Report& report) {
        return report.kind == ReportKind::kTextNotDrawn;
    });
    return why != m_reports.end() ? Describe(*why) : "the text is not drawn";
}

bool SetApplicationTextEncoding(std::string_view name) {
    const auto encoding = TextEncoding::Find(name);
    if (encoding)
        TextContext::TheProcess().m_encoding.store(&encoding->Details(), std::memory_order_release);
    return encoding.has_value();
}

TextScope::TextScope(TextContext& context) : m_before(t_current) {
    t_current = &context;
}

TextScope::~TextScope() {
    t_current = m_before;
}

} // namespace platform
