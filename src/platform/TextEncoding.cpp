// SPDX-License-Identifier: BSD-3-Clause
// The application's text encoding. UTF-8 is handled here, the others are converted by iconv; where
// their characters begin and end follows from their lead bytes alone.
#include "platform/TextEncoding.h"

#include <array>
#include <bitset>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <iconv.h>
#include <langinfo.h>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/TextContext.h"
#include "platform/Utf8.h"

namespace platform {

// One encoding; lives as long as the process.
struct EncodingDetails {
    std::string name;           // canonical
    std::string iconvName;      // empty for UTF-8
    std::bitset<256> leads;     // bytes that a longer character starts with; unused for UTF-8
    bool threeByteLead = false; // kThreeByteLead takes two bytes
    std::uint32_t serial = 0;   // a number of its own

    bool IsUtf8() const { return iconvName.empty(); }
    bool IsLead(char byte) const { return leads[static_cast<std::uint8_t>(byte)]; }
};

namespace {

constexpr std::uint8_t kThreeByteLead = 0x8F; // of EUC-JP: the next plane's two bytes follow
constexpr const char* kReplacementUtf8 = "\xEF\xBF\xBD";

struct KnownEncoding {
    const char* key; // upper case, without hyphens and underscores
    const char* name;
    const char* iconvName;
    std::array<std::uint8_t, 4> leads; // two inclusive ranges; the second may repeat the first
};

// glibc's plain SHIFT_JIS makes a yen sign of the backslash and, like its plain EUC-JP, refuses the
// vendor characters that real files hold; CP932 and EUC-JP-MS take both.
constexpr KnownEncoding kKnownEncodings[] = {
    { "UTF8", "UTF-8", "", { 1, 0, 1, 0 } },
    { "CP932", "CP932", "CP932", { 0x81, 0x9F, 0xE0, 0xFC } },
    { "SHIFTJIS", "CP932", "CP932", { 0x81, 0x9F, 0xE0, 0xFC } },
    { "SJIS", "CP932", "CP932", { 0x81, 0x9F, 0xE0, 0xFC } },
    { "WINDOWS31J", "CP932", "CP932", { 0x81, 0x9F, 0xE0, 0xFC } },
    { "EUCJP", "EUC-JP", "EUC-JP-MS", { 0x8E, 0x8F, 0xA1, 0xFE } },
    { "EUCJPMS", "EUC-JP", "EUC-JP-MS", { 0x8E, 0x8F, 0xA1, 0xFE } },
    { "EUCKR", "EUC-KR", "EUC-KR", { 0xA1, 0xFE, 0xA1, 0xFE } },
    { "GBK", "GBK", "GBK", { 0x81, 0xFE, 0x81, 0xFE } },
    { "CP936", "GBK", "GBK", { 0x81, 0xFE, 0x81, 0xFE } },
    { "BIG5", "Big5", "BIG5", { 0x81, 0xFE, 0x81, 0xFE } },
};

std::string KeyOf(std::string_view name) {
    std::string key;
    for (const char c : name)
        if (c != '-' && c != '_')
            key += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return key;
}

// A conversion of iconv, closed by its owner.
class Converter {
public:
    Converter(const char* to, const char* from) : m_handle(iconv_open(to, from)) {}
    ~Converter() {
        if (IsOpen())
            iconv_close(m_handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // iconv_open answers a failure with -1 in the shape of a pointer.
    bool IsOpen() const { return reinterpret_cast<std::intptr_t>(m_handle) != -1; }

    enum class Result { kDone, kBadBytes, kCutOff };
    // Converts from the front of input, which is shortened by what was used, onto the end of output.
    Result Convert(std::string_view& input, std::string& output) {
        if (!IsOpen())
            return Result::kBadBytes;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        for (;;) {
            char piece[512];
            char* in = const_cast<char*>(input.data()); // iconv only reads there
            std::size_t inLeft = input.size();
            char* out = piece;
            std::size_t outLeft = sizeof piece;
            const std::size_t status = iconv(m_handle, &in, &inLeft, &out, &outLeft);
            const int reason = errno;
            output.append(piece, sizeof piece - outLeft);
            input.remove_prefix(input.size() - inLeft);
            const bool done = status != static_cast<std::size_t>(-1);
            if (done || reason != E2BIG) {
                Flush(output);
                return done               ? Result::kDone
                       : reason == EINVAL ? Result::kCutOff
                                          : Result::kBadBytes;
            }
        }
    }

private:
    // Some encodings have characters with a mark in them: their converters keep a character back
    // until they have seen that its mark does not follow.
    void Flush(std::string& output) {
        char piece[64];
        char* out = piece;
        std::size_t outLeft = sizeof piece;
        iconv(m_handle, nullptr, nullptr, &out, &outLeft);
        output.append(piece, sizeof piece - outLeft);
    }

    iconv_t m_handle;
};

struct Converters {
    const EncodingDetails* encoding = nullptr;
    std::unique_ptr<Converter> decode, encode;
};

// The calling thread's converters for encoding; iconv's descriptors carry state and are not shared.
Converters& ConvertersFor(const EncodingDetails& encoding) {
    thread_local Converters converters;
    if (converters.encoding != &encoding) {
        const char* name = encoding.iconvName.c_str();
        converters.decode = std::make_unique<Converter>("UTF-8", name);
        converters.encode = std::make_unique<Converter>(name, "UTF-8");
        converters.encoding = &encoding;
    }
    return converters;
}

// Learns the lead bytes of an encoding that the table does not know: a lead byte alone is cut off.
// False when the encoding is no superset of ASCII, whose bytes every record relies on; the backslash
// and the tilde are other characters in some national sets.
bool ProbeLeadBytes(EncodingDetails& encoding) {
    Converter decode("UTF-8", encoding.iconvName.c_str());
    if (!decode.IsOpen())
        return false;
    for (int value = 1; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        std::string_view input(&byte, 1);
        std::string decoded;
        const Converter::Result result = decode.Convert(input, decoded);
        if (value < 0x80 && value != '\\' && value != '~' && decoded != std::string(1, byte))
            return false;
        encoding.leads[value] = value >= 0x80 && result == Converter::Result::kCutOff;
    }
    return true;
}

bool Describe(std::string_view name, EncodingDetails& encoding) {
    const std::string key = KeyOf(name);
    for (const KnownEncoding& known : kKnownEncodings) {
        if (key != known.key)
            continue;
        encoding.name = known.name;
        encoding.iconvName = known.iconvName;
        encoding.threeByteLead = encoding.name == "EUC-JP";
        for (int byte = 0; byte < 256; ++byte) {
            encoding.leads[byte] = (byte >= known.leads[0] && byte <= known.leads[1]) ||
                                   (byte >= known.leads[2] && byte <= known.leads[3]);
        }
        return true; // also where iconv lacks it: its lines are still split where they should be
    }
    // A slash would let iconv's own options in; an empty name means the locale to it.
    if (key.empty() || name.find('/') != std::string_view::npos ||
        name.find('\0') != std::string_view::npos)
        return false;
    encoding.name = encoding.iconvName = std::string(name);
    return ProbeLeadBytes(encoding);
}

// The descriptions that were asked for so far. They stay, because calls that run hold on to them.
const EncodingDetails* FindEncoding(std::string_view name) {
    static std::mutex mutex;
    static std::deque<EncodingDetails> encodings;
    EncodingDetails asked;
    if (!Describe(name, asked))
        return nullptr;
    const std::lock_guard lock(mutex);
    for (const EncodingDetails& encoding : encodings)
        if (KeyOf(encoding.name) == KeyOf(asked.name))
            return &encoding;
    asked.serial = static_cast<std::uint32_t>(encodings.size()) + 1;
    return &encodings.emplace_back(std::move(asked));
}

const EncodingDetails& CurrentEncoding() {
    return TextContext::Current().Encoding().Details();
}

// Characters of encodings with lead bytes: a lead byte takes whatever non-NUL byte follows, so that a
// byte outside the lead range always ends a character. That also makes 0x8F of EUC-JP a character
// of two bytes when what follows is no lead byte.
std::size_t LeadByteCharacterLength(const EncodingDetails& encoding, std::string_view text) {
    if (text.size() < 2 || !encoding.IsLead(text[0]) || text[1] == '\0')
        return 1;
    const bool three = encoding.threeByteLead &&
                       static_cast<std::uint8_t>(text[0]) == kThreeByteLead &&
                       encoding.IsLead(text[1]);
    if (!three)
        return 2;
    return text.size() < 3 || text[2] == '\0' ? 1 : 3;
}

std::size_t CharacterLengthIn(const EncodingDetails& encoding, std::string_view text) {
    if (text.empty())
        return 0;
    if (encoding.IsUtf8()) {
        const std::size_t length = Utf8SequenceLength(text);
        return length == 0 ? 1 : length;
    }
    return LeadByteCharacterLength(encoding, text);
}

// What may be read of a character that starts at text: its bytes up to a NUL, at most four.
std::string_view Window(const char* text) {
    return { text, strnlen(text, 4) };
}

constexpr std::size_t kLookBackBlock = std::size_t { 64 } * 1024;

// Where the character that holds the byte at offset may start, with at most two blocks of steps.
std::size_t CharacterStart(const EncodingDetails& encoding, const char* text, std::size_t offset) {
    if (encoding.IsUtf8()) {
        for (std::size_t back = 1; back <= 3 && back <= offset; ++back)
            if (Utf8SequenceLength(Window(text + offset - back)) > back)
                return offset - back;
        return offset;
    }
    // Only the run of lead bytes before offset leaves it open where a character starts. Where the run
    // goes on beyond the bound, which steps with the text so that neighbours agree, a character is
    // taken to start there: a run of 32 thousand characters without a break, a blank or a digit is no
    // text that anybody wrote.
    const std::size_t block = offset / kLookBackBlock * kLookBackBlock;
    const std::size_t bound = block > kLookBackBlock ? block - kLookBackBlock : 0;
    std::size_t start = offset;
    while (start > bound && encoding.IsLead(text[start - 1]))
        --start;
    if (!encoding.threeByteLead)
        return offset - ((offset - start) & 1);
    for (;;) {
        const std::size_t length = LeadByteCharacterLength(encoding, Window(text + start));
        if (start + length > offset)
            return start;
        start += length;
    }
}

void ReportMalformed(const EncodingDetails& encoding, std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string hex;
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        hex += { kDigits[byte >> 4], kDigits[byte & 15] };
    }
    const bool known = encoding.IsUtf8() || ConvertersFor(encoding).decode->IsOpen();
    TextContext::Current().Tell(
        { ReportKind::kTextMalformed, hex, "U+FFFD",
          known ? "the bytes are no " + encoding.name
                : "this machine's iconv does not convert " + encoding.iconvName });
}

// True for the start of a well-formed sequence that the end of text cuts off.
bool IsCutOffUtf8(std::string_view text) {
    if (text.empty() || text.size() > 3)
        return false;
    std::string completed(text);
    // The second byte's range is narrowed by some leads; one of these values suits each of them.
    for (const char* fill : { "\x80\x80\x80", "\xBF\xBF\xBF" }) {
        completed.resize(text.size());
        const auto lead = static_cast<std::uint8_t>(text[0]);
        const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (text.size() < length) {
            completed.append(fill, length - text.size());
            if (lead >= 0xC2 && Utf8SequenceLength(completed) == length)
                return true;
        }
    }
    return false;
}

std::string DecodeUtf8(const EncodingDetails& encoding, std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    std::size_t plain = 0; // well-formed bytes that wait to be copied
    while (plain < bytes.size()) {
        const std::string_view rest = bytes.substr(plain);
        if (const std::size_t length = Utf8SequenceLength(rest)) {
            plain += length;
            continue;
        }
        text += bytes.substr(0, plain);
        if (IsCutOffUtf8(rest))
            return text;
        ReportMalformed(encoding, rest.substr(0, 1));
        text += kReplacementUtf8;
        bytes.remove_prefix(plain + 1);
        plain = 0;
    }
    text += bytes;
    return text;
}

// A single byte that starts a character of several bytes when there were more of them.
bool IsCutOff(const EncodingDetails& encoding, std::string_view rest) {
    return encoding.IsLead(rest[0]) &&
           (rest.size() == 1 ||
            (encoding.threeByteLead && rest.size() == 2 &&
             static_cast<std::uint8_t>(rest[0]) == kThreeByteLead && encoding.IsLead(rest[1])));
}

std::string DecodeWithIconv(const EncodingDetails& encoding, std::string_view bytes) {
    Converter& decode = *ConvertersFor(encoding).decode;
    std::string text;
    while (!bytes.empty()) {
        if (decode.Convert(bytes, text) == Converter::Result::kDone || IsCutOff(encoding, bytes))
            break;
        const std::size_t length = LeadByteCharacterLength(encoding, bytes);
        ReportMalformed(encoding, bytes.substr(0, length));
        text += kReplacementUtf8;
        bytes.remove_prefix(length);
    }
    return text;
}

// part is well-formed, so that iconv refuses a character only because the encoding lacks it.
void EncodeWithIconv(Converter& encode, std::string_view part, EncodedText& result) {
    while (!part.empty() && encode.Convert(part, result.bytes) != Converter::Result::kDone) {
        result.bytes += '?';
        result.complete = false;
        part.remove_prefix(Utf8SequenceLength(part));
    }
}

} // namespace

std::optional<TextEncoding> TextEncoding::Find(std::string_view name) {
    const EncodingDetails* const found = FindEncoding(name);
    return found ? std::optional(TextEncoding(*found)) : std::nullopt;
}

TextEncoding TextEncoding::OfEnvironment() {
    if (const char* name = std::getenv("TELOP_TEXT_ENCODING")) {
        if (const auto encoding = Find(name))
            return *encoding;
        TextContext::Current().Tell({ ReportKind::kTextMalformed, std::string("in ") + name,
                                      "UTF-8",
                                      "TELOP_TEXT_ENCODING names no encoding of this machine" });
    }
    const EncodingDetails* encoding = FindEncoding(nl_langinfo(CODESET));
    return encoding && encoding->leads.any() ? TextEncoding(*encoding) : Utf8();
}

const std::string& TextEncoding::Name() const {
    return m_details->name;
}

std::uint32_t TextEncoding::Serial() const {
    return m_details->serial;
}

std::string ApplicationTextEncoding() {
    return CurrentEncoding().name;
}

std::size_t CharacterLength(std::string_view text) {
    return CharacterLengthIn(CurrentEncoding(), text);
}

std::int16_t CharacterByteType(const char* text, std::size_t offset, ScriptCode /*script*/) {
    const EncodingDetails& encoding = CurrentEncoding();
    if (text[offset] == '\0')
        return kSingleByte;
    const std::size_t start = CharacterStart(encoding, text, offset);
    const std::size_t length = CharacterLengthIn(encoding, Window(text + start));
    const std::size_t index = offset - start;
    if (length < 2 || index >= length)
        return kSingleByte;
    return index == 0 ? kFirstByte : index + 1 == length ? kLastByte : kMiddleByte;
}

std::string DecodeText(std::string_view bytes) {
    const EncodingDetails& encoding = CurrentEncoding();
    return encoding.IsUtf8() ? DecodeUtf8(encoding, bytes) : DecodeWithIconv(encoding, bytes);
}

EncodedText EncodeText(std::string_view utf8) {
    const EncodingDetails& encoding = CurrentEncoding();
    EncodedText result { "", true };
    Converter* const encode = encoding.IsUtf8() ? nullptr : ConvertersFor(encoding).encode.get();
    while (!utf8.empty()) {
        std::size_t good = 0;
        while (const std::size_t length = Utf8SequenceLength(utf8.substr(good)))
            good += length;
        const std::string_view part = utf8.substr(0, good);
        utf8.remove_prefix(good);
        if (encode)
            EncodeWithIconv(*encode, part, result);
        else
            result.bytes += part;
        if (!utf8.empty()) {
            result.bytes += '?';
            result.complete = false;
            utf8.remove_prefix(1);
        }
    }
    return result;
}

std::string_view CutToWholeCharacters(std::string_view bytes, std::size_t size) {
    const EncodingDetails& encoding = CurrentEncoding();
    std::size_t end = 0;
    while (end < bytes.size()) {
        const std::size_t length = CharacterLengthIn(encoding, bytes.substr(end));
        if (length > size - end)
            break;
        end += length;
    }
    return bytes.substr(0, end);
}

} // namespace platform
