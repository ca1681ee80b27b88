// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TokenText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

namespace host {

namespace {

constexpr int kMaxWidth = 32;
constexpr std::string_view kKnownTokens =
    "the tokens are {frame}, {frame:04}, {frame-1000}, {frame+1:03} and {file}; {{ and }} are "
    "braces";

template <typename Number>
bool ReadAll(std::string_view digits, Number& value) {
    const auto end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && stop == end;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::int64_t SaturatingAdd(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(a, b, &sum))
        return sum;
    return b > 0 ? std::numeric_limits<std::int64_t>::max()
                 : std::numeric_limits<std::int64_t>::min();
}

std::string Padded(std::int64_t number, int width, char fill) {
    std::string digits = std::to_string(number);
    const std::size_t missing = std::max<std::size_t>(digits.size(), width) - digits.size();
    // Zeros go behind the sign, spaces before it.
    digits.insert(fill == '0' && number < 0 ? 1 : 0, missing, fill);
    return digits;
}

} // namespace

std::optional<TokenText::Piece> TokenText::ParseToken(std::string_view token) {
    Piece piece;
    if (token == "file") {
        piece.kind = Kind::kFile;
        return piece;
    }
    if (!token.starts_with("frame"))
        return std::nullopt;
    piece.kind = Kind::kFrame;
    token.remove_prefix(5);

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

std::optional<TokenText> TokenText::Parse(std::string_view utf8, std::string& why) {
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
        const auto token = utf8.substr(i, close == std::string_view::npos ? 1 : close - i + 1);
        auto piece =
            token.size() > 1 ? ParseToken(token.substr(1, token.size() - 2)) : std::nullopt;
        if (!piece) {
            why = (token.size() > 1 ? "'" + std::string(token) + "' is no token"
                                    : "'" + std::string(token) + "' stands alone") +
                  "; " + std::string(kKnownTokens);
            return std::nullopt;
        }
        flush();
        result.m_pieces.push_back(*std::move(piece));
        i = close;
    }
    flush();
    return result;
}

std::string TokenText::Resolve(const TokenValues& values) const {
    std::string text;
    for (const auto& piece : m_pieces)
        if (piece.kind == Kind::kFrame)
            text += Padded(SaturatingAdd(values.frame, piece.offset), piece.width, piece.fill);
        else
            text += piece.kind == Kind::kFile ? values.file : piece.text;
    return text;
}

std::string TokenText::Shortest() const {
    std::string text;
    for (const auto& piece : m_pieces)
        text += piece.kind == Kind::kFrame ? Padded(0, piece.width, piece.fill) : piece.text;
    return text;
}

bool TokenText::HasTokens() const {
    return std::any_of(m_pieces.begin(), m_pieces.end(),
                       [](const Piece& piece) { return piece.kind != Kind::kLiteral; });
}

bool TokenText::NeedsFile() const {
    return std::any_of(m_pieces.begin(), m_pieces.end(),
                       [](const Piece& piece) { return piece.kind == Kind::kFile; });
}

} // namespace host
