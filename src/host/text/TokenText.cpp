// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TokenText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

#include "host/text/NearestName.h"

namespace host {

namespace {

constexpr int kMaxWidth = 32;
constexpr std::size_t kShownDefines = 12; // in a message
constexpr std::size_t kShownLength = 60;
constexpr std::string_view kKnownTokens =
    "the tokens are {frame}, {frame:04}, {frame-1000}, {frame+1:03}, {first}, {last}, {count}, "
    "{tc}, "
    "{seconds}, {seconds:.2}, {file}, {name}, {date} and {time}; {{ and }} are braces";

constexpr std::array<std::pair<std::string_view, Token>, 10> kTokens { {
    { "frame", Token::kFrame },
    { "first", Token::kFirst },
    { "last", Token::kLast },
    { "count", Token::kCount },
    { "seconds", Token::kSeconds },
    { "tc", Token::kTimeCode },
    { "file", Token::kFile },
    { "name", Token::kName },
    { "date", Token::kDate },
    { "time", Token::kTime },
} };

template <typename Number>
bool ReadAll(std::string_view digits, Number& value) {
    const auto end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && stop == end;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsNameStart(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

std::int64_t SaturatingAdd(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(a, b, &sum))
        return sum;
    return b > 0 ? std::numeric_limits<std::int64_t>::max()
                 : std::numeric_limits<std::int64_t>::min();
}

std::int64_t SaturatingSubtract(std::int64_t a, std::int64_t b) {
    std::int64_t difference = 0;
    if (!__builtin_sub_overflow(a, b, &difference))
        return difference;
    return b < 0 ? std::numeric_limits<std::int64_t>::max()
                 : std::numeric_limits<std::int64_t>::min();
}

// A text between braces that lie far apart is no token that anybody meant.
std::string Shown(std::string_view token) {
    if (token.size() <= kShownLength)
        return std::string(token);
    auto length = kShownLength;
    while (length > 0 && (token[length] & 0xC0) == 0x80)
        --length;
    return std::string(token.substr(0, length)) + "...";
}

std::string UnknownToken(std::string_view token, const Defines& defines) {
    std::vector<std::string_view> known;
    known.reserve(kTokens.size() + defines.size());
    for (const auto& [name, kind] : kTokens)
        known.push_back(name);
    std::string defined;
    for (const auto& [name, value] : defines) {
        known.push_back(name);
        if (known.size() <= kTokens.size() + kShownDefines)
            defined += (defined.empty() ? "{" : ", {") + name + "}";
    }
    const auto typed = token.substr(1, token.size() - 2);
    auto nearest = NearestName(typed, known);
    if (nearest.empty())
        nearest = NearestName(typed.substr(0, typed.find_first_of("+-:")), known);

    auto text = "'" + Shown(token) + "' is no token";
    if (!nearest.empty())
        text += ", {" + std::string(nearest) + "} is the nearest";
    text += "; " + std::string(kKnownTokens);
    return defined.empty() ? text : text + "; defined: " + defined;
}

} // namespace

void RunValues::SetShot(std::span<const std::int64_t> numbers,
                        const std::filesystem::path& shotFolder) {
    count = static_cast<std::int64_t>(numbers.size());
    first = numbers.empty() ? 0 : numbers.front();
    last = numbers.empty() ? 0 : numbers.back();
    zeroFrame = first;
    // "shots/one/", "." and "" name no folder at their ends.
    std::error_code ignored;
    const auto folder = std::filesystem::absolute(shotFolder.empty() ? "." : shotFolder, ignored)
                            .lexically_normal();
    name = (folder.has_filename() ? folder : folder.parent_path()).filename().string();
}

void RunValues::SetClock(const ShotClock& clock) {
    timeCode = clock.timeCode;
    startCode = clock.startCode;
}

void RunValues::SetDate(std::time_t moment) {
    std::tm parts {};
    localtime_r(&moment, &parts);
    std::array<char, 64> text {};
    date.assign(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts));
    time.assign(text.data(), std::strftime(text.data(), text.size(), "%H:%M:%S", &parts));
}

bool TokenText::Piece::IsNumber() const {
    return token == Token::kFrame || token == Token::kFirst || token == Token::kLast ||
           token == Token::kCount;
}

std::optional<TokenText::Piece> TokenText::ParseToken(std::string_view token) {
    const auto nameEnd = std::min(token.find_first_of("+-:"), token.size());
    const auto known = std::find_if(kTokens.begin(), kTokens.end(), [&](const auto& entry) {
        return entry.first == token.substr(0, nameEnd);
    });
    if (known == kTokens.end())
        return std::nullopt;
    Piece piece { .token = known->second };
    token.remove_prefix(nameEnd);
    if (token.empty())
        return piece;
    if (piece.token == Token::kSeconds && token.size() == 3 && token.starts_with(":.") &&
        IsDigit(token[2])) {
        piece.decimals = token[2] - '0';
        return piece;
    }
    if (!piece.IsNumber())
        return std::nullopt;

    const auto colon = token.find(':');
    auto offset = token.substr(0, colon);
    if (!offset.empty()) {
        const bool signedNumber =
            offset.size() > 1 && (offset[0] == '+' || offset[0] == '-') && IsDigit(offset[1]);
        offset.remove_prefix(signedNumber && offset[0] == '+' ? 1 : 0);
        if (!signedNumber || !ReadAll(offset, piece.offset))
            return std::nullopt;
    }
    if (colon != std::string_view::npos) {
        const auto width = token.substr(colon + 1);
        if (width.empty() || !IsDigit(width[0]) || !ReadAll(width, piece.width) ||
            piece.width < 1 || piece.width > kMaxWidth)
            return std::nullopt;
        piece.fill = width[0] == '0' ? '0' : ' ';
    }
    return piece;
}

std::optional<TokenText> TokenText::Parse(std::string_view utf8, std::string& why,
                                          const Defines& defines) {
    TokenText result;
    std::string literal;
    const auto flush = [&] {
        if (!literal.empty())
            result.m_pieces.push_back({ .text = std::exchange(literal, {}) });
    };
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        const bool doubled = i + 1 < utf8.size() && utf8[i + 1] == c;
        if ((c != '{' && c != '}') || doubled) {
            i += c == '{' || c == '}' ? 1 : 0;
            literal += c;
            continue;
        }
        const auto close = c == '{' ? utf8.find('}', i) : std::string_view::npos;
        if (close == std::string_view::npos) {
            why = "'" + std::string(1, c) + "' stands alone; " + std::string(kKnownTokens);
            return std::nullopt;
        }
        const auto token = utf8.substr(i, close - i + 1);
        const auto name = token.substr(1, token.size() - 2);
        if (auto piece = ParseToken(name)) {
            flush();
            result.m_pieces.push_back(*std::move(piece));
        } else if (const auto defined = defines.find(name); defined != defines.end()) {
            literal += defined->second;
        } else {
            why = UnknownToken(token, defines);
            return std::nullopt;
        }
        i = close;
    }
    flush();
    return result;
}

std::string TokenText::Literal(std::string_view utf8) {
    std::string text;
    for (const char c : utf8)
        text.append(c == '{' || c == '}' ? 2 : 1, c);
    return text;
}

bool TokenText::IsDefinable(std::string_view name, std::string& why) {
    const bool named = !name.empty() && IsNameStart(name[0]) &&
                       std::all_of(name.begin(), name.end(),
                                   [](char c) { return IsNameStart(c) || IsDigit(c) || c == '-'; });
    if (!named)
        why = "'" + std::string(name) +
              "' cannot be the name of a token: letters, digits, '_' and '-' can, with a letter "
              "or '_' in front";
    else if (ParseToken(name))
        why = "{" + std::string(name) + "} has a meaning already and cannot be defined anew";
    else
        return true;
    return false;
}

void TokenText::AppendNumber(std::string& text, const Piece& piece, std::int64_t number) {
    const auto digits = std::to_string(number);
    const auto width = static_cast<std::size_t>(piece.width);
    const std::size_t missing = std::max(digits.size(), width) - digits.size();
    // Zeros go behind the sign, spaces before it.
    const std::size_t sign = piece.fill == '0' && number < 0 ? 1 : 0;
    text.append(digits, 0, sign).append(missing, piece.fill).append(digits, sign);
}

std::string TokenText::Resolve(const TokenValues& values) const {
    static const RunValues unknown;
    const RunValues& run = values.run ? *values.run : unknown;
    const auto sinceZero = SaturatingSubtract(values.frame, run.zeroFrame);
    std::string text;
    for (const auto& piece : m_pieces) {
        if (!piece.token) {
            text += piece.text;
            continue;
        }
        const auto number = [&](std::int64_t value) {
            AppendNumber(text, piece, SaturatingAdd(value, piece.offset));
        };
        switch (*piece.token) {
        case Token::kFrame:
            number(values.frame);
            break;
        case Token::kFirst:
            number(run.first);
            break;
        case Token::kLast:
            number(run.last);
            break;
        case Token::kCount:
            number(run.count);
            break;
        case Token::kSeconds:
            text += run.timeCode.Rate().SecondsAt(sinceZero, piece.decimals);
            break;
        case Token::kTimeCode:
            text += run.timeCode.Format(SaturatingAdd(sinceZero, run.startCode));
            break;
        case Token::kFile:
            text += values.file;
            break;
        case Token::kName:
            text += run.name;
            break;
        case Token::kDate:
            text += run.date;
            break;
        case Token::kTime:
            text += run.time;
            break;
        }
    }
    return text;
}

std::string TokenText::Shortest() const {
    std::string text;
    for (const auto& piece : m_pieces)
        if (piece.IsNumber())
            AppendNumber(text, piece, 0);
        else if (piece.token == Token::kSeconds)
            text += FrameRate().SecondsAt(0, piece.decimals);
        else if (piece.token == Token::kTimeCode)
            text += TimeCode().Format(0);
        else
            text += piece.text;
    return text;
}

bool TokenText::HasTokens() const {
    return std::any_of(m_pieces.begin(), m_pieces.end(),
                       [](const Piece& piece) { return piece.token.has_value(); });
}

bool TokenText::Uses(Token token) const {
    return std::any_of(m_pieces.begin(), m_pieces.end(),
                       [token](const Piece& piece) { return piece.token == token; });
}

} // namespace host
