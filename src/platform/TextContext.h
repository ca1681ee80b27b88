// SPDX-License-Identifier: BSD-3-Clause
// What a document or a run wants of text, and what became of it: the encoding of its bytes, the language
// of a bundle's own words, the fonts to fall back on, and the list of what could not be honoured to the
// letter. Whoever draws makes one and puts it on a thread for a scope; a thread without one has the
// process's own.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/TextEncoding.h"

namespace platform {

enum class ReportKind {
    kFontSubstituted, // the family asked for is not installed
    kFontBroken,      // a font file could not be read
    kGlyphMissing,    // no installed font has the character
    kInkCut,          // a part of the character lies above or below its picture
    kTextMalformed,   // bytes that are no text in the encoding
    kTextNotDrawn,    // no font at all, no picture can hold the text, or there is no memory for it
    kBundleBroken,    // a bundle's file is missing or not readable
};

struct Report {
    ReportKind kind;
    std::string asked;  // family name, character as U+XXXX, bytes in hex, or path, in UTF-8
    std::string used;   // what stands in for it; empty for nothing
    std::string reason; // why, one clause without a full stop
};

// One line for people: what was asked, what is used instead and why.
std::string Describe(const Report& report);

// Families to look in, in their order, for a character that the asked one lacks, before the machine's
// own choice. There is one object for each list, which stays until the process ends.
struct FontFallbacks {
    std::vector<std::string> families; // UTF-8, as GetFNum understands them
    std::uint32_t serial = 0;          // 0 for the empty list

    static const FontFallbacks& Of(const std::vector<std::string>& families);
};

class TextContext {
public:
    // Called on the thread that met the fact, with no lock of the platform held. The fact may be met
    // in the middle of a line, so a handler must not draw, measure or convert text.
    using Handler = std::function<void(const Report&)>;
    // A text made to be malformed in ever new ways shall not fill the memory.
    static constexpr std::size_t kMaxReports = 4096;

    // With what the current one wants.
    TextContext();
    // With what another one wants, which may belong to another thread.
    TextContext(const TextContext& outer, Handler handler);
    // language is a locale such as "ja" or "pt_BR", or several with colons between them, the best
    // first; empty for that of the current one.
    explicit TextContext(TextEncoding encoding, Handler handler = {}, std::string language = {},
                         const std::vector<std::string>& fallbacks = {});

    // The calling thread's.
    static TextContext& Current();

    // What follows may be called on any thread.

    TextEncoding Encoding() const;
    // Names of language folders, as UserLanguages gives them for the environment.
    std::vector<std::string> Languages() const;
    // The same as the constructor takes them; never empty.
    std::string Language() const;
    // As IdeographLanguageOf gives it for them.
    std::string IdeographLanguage() const;
    const FontFallbacks& Fallbacks() const { return *m_fallbacks; }
    // Whether the digits 0 to 9 are of one width where a font has such, and not kerned, so that a text
    // that counts stands still. Off at first; contexts below one that are made later take it over.
    bool HasTabularDigits() const { return m_tabularDigits; }
    void UseTabularDigits(bool on) { m_tabularDigits = on; }
    // Keeps the report and hands it to the handler, unless one of the same kind and subject went
    // before it in this context.
    void Tell(const Report& report);
    // That a text is lost, for a reason such as "no font is installed". It is known afterwards also
    // when there is no memory to keep the reason.
    void TellNotDrawn(std::string_view reason) noexcept;
    // What was told so far, in order.
    std::vector<Report> Reports() const;
    // Why a text could not be drawn, for people; empty while none is lost.
    std::string Failure() const;

private:
    friend bool SetApplicationTextEncoding(std::string_view name);
    struct OfProcess {};
    explicit TextContext(OfProcess) {}
    static TextContext& TheProcess();

    // Null: the environment's, which is looked up when it is asked for.
    mutable std::atomic<const EncodingDetails*> m_encoding { nullptr };
    std::string m_language; // empty: the environment's, too
    const FontFallbacks* m_fallbacks = &FontFallbacks::Of({});
    std::atomic<bool> m_tabularDigits { false };
    Handler m_handler;
    std::atomic<bool> m_notDrawn { false };
    mutable std::mutex m_mutex; // guards what follows
    std::set<std::pair<ReportKind, std::string>> m_subjects;
    std::vector<Report> m_reports;
};

// Makes a context the calling thread's until the scope ends, which must be on the same thread and
// before the context does. Scopes are nested.
class TextScope {
public:
    explicit TextScope(TextContext& context);
    TextScope(const TextScope&) = delete;
    TextScope& operator=(const TextScope&) = delete;
    ~TextScope();

private:
    TextContext* m_before;
};

} // namespace platform
