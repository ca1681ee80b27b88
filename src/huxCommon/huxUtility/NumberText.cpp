// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kDefaultFormat = "%.1f";
constexpr int kMaxWidth = 64, kMaxPrecision = 40;

// A printf format that has exactly one conversion.
struct NumberFormat {
    std::string before, after; // the text around it
    std::string sign;          // of numbers that are not negative
    int width = 0;             // to be filled up with zeros
    std::optional<int> precision;
    char kind = 'f';
};

// Moves past the digits at the start of text; more than limit gives limit.
int TakeNumber(std::string_view& text, int limit) {
    int number = 0;
    for (; !text.empty() && kDigits.find(text.front()) != kDigits.npos; text.remove_prefix(1))
        number = std::min(limit, number * 10 + (text.front() - '0'));
    return number;
}

// The literal text up to the next conversion, whose '%' is taken off too; all of it when there is none.
std::string TakeLiteral(std::string_view& text, bool* atConversion) {
    std::string literal;
    *atConversion = false;
    while (!text.empty() && !*atConversion) {
        const char next = text.front();
        text.remove_prefix(1);
        if (next != '%') {
            literal += next;
        } else if (text.starts_with('%')) {
            literal += next;
            text.remove_prefix(1);
        } else {
            *atConversion = true;
        }
    }
    return literal;
}

void TakeFlags(std::string_view& text, NumberFormat* format) {
    bool zeros = false, left = false;
    for (; !text.empty() && std::string_view("+ -0#").find(text.front()) != text.npos;
         text.remove_prefix(1)) {
        zeros |= text.front() == '0';
        left |= text.front() == '-';
        if (text.front() == '+' || (text.front() == ' ' && format->sign.empty()))
            format->sign = text.front();
    }
    const int width = TakeNumber(text, kMaxWidth);
    if (zeros && !left)
        format->width = width;
}

std::optional<NumberFormat> ReadFormat(std::string_view text) {
    NumberFormat format;
    bool atConversion = false;
    format.before = TakeLiteral(text, &atConversion);
    if (!atConversion)
        return std::nullopt;
    TakeFlags(text, &format);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        format.precision = TakeNumber(text, kMaxPrecision);
    }
    while (!text.empty() && std::string_view("hlLq").find(text.front()) != text.npos)
        text.remove_prefix(1);
    if (text.empty() || std::string_view("fFeEgGdi").find(text.front()) == text.npos)
        return std::nullopt;
    format.kind = text.front();
    text.remove_prefix(1);
    format.after = TakeLiteral(text, &atConversion);
    return atConversion ? std::nullopt : std::optional(format);
}

// The number's digits, from 0 up, without sign.
std::string Digits(double number, const NumberFormat& format) {
    if (format.kind == 'd' || format.kind == 'i')
        return std::to_string(Truncated(number));
    std::array<char, 512> buffer; // the longest: 309 digits, the point and kMaxPrecision more
    const int precision = format.precision.value_or(6);
    const bool capital = format.kind == 'E' || format.kind == 'G';
    const std::chars_format notation =
        format.kind == 'f' || format.kind == 'F'   ? std::chars_format::fixed
        : format.kind == 'e' || format.kind == 'E' ? std::chars_format::scientific
                                                   : std::chars_format::general;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, notation, precision);
    std::string digits(buffer.data(), end.ptr);
    if (capital)
        std::ranges::replace(digits, 'e', 'E');
    return digits;
}

std::string_view WithoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

// from_chars takes a minus alone.
std::string_view WithoutPlus(std::string_view text) {
    if (text.starts_with('+') && !text.substr(1).starts_with('-'))
        text.remove_prefix(1);
    return text;
}

} // namespace

long ParseInteger(std::string_view text) {
    text = WithoutPlus(WithoutBlanks(text));
    long number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc::result_out_of_range)
        return number;
    using Limits = std::numeric_limits<long>;
    return text.starts_with('-') ? Limits::min() : Limits::max();
}

double ParseDouble(std::string_view text) {
    text = WithoutPlus(WithoutBlanks(text));
    const bool negative = text.starts_with('-');
    // "inf" and "nan" are no numbers in a field.
    const std::string_view digits = text.substr(negative ? 1 : 0);
    if (digits.empty() || (digits[0] != '.' && kDigits.find(digits[0]) == kDigits.npos))
        return 0;
    double number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small or too large: only digits before the point, or an exponent above 0, make it large.
        const std::size_t exponent = digits.find_first_of("eE");
        const bool tiny = exponent != digits.npos
                              ? digits.substr(exponent + 1).starts_with('-')
                              : digits.find_first_not_of('0') == digits.find('.');
        number = tiny ? 0 : std::numeric_limits<double>::max();
    }
    return negative ? -number : number;
}

long Truncated(double number) {
    using Limits = std::numeric_limits<long>;
    if (std::isnan(number))
        return 0;
    // The lowest long is a double too, the highest is not.
    constexpr auto kLow = static_cast<double>(Limits::min());
    if (number < kLow)
        return Limits::min();
    return number >= -kLow ? Limits::max() : static_cast<long>(number);
}

std::string FormatDouble(std::string_view text, double number) {
    using Limits = std::numeric_limits<double>;
    const NumberFormat format = ReadFormat(text).value_or(*ReadFormat(kDefaultFormat));
    number = std::isnan(number) ? 0 : std::clamp(number, Limits::lowest(), Limits::max());
    std::string digits = Digits(std::abs(number), format);
    // What rounds to nothing has no sign.
    const bool negative = number < 0 && digits.find_first_of("123456789") != digits.npos;
    const std::string sign = negative ? "-" : format.sign;
    const auto missing = format.width - static_cast<int>(sign.size() + digits.size());
    digits.insert(0, static_cast<std::size_t>(std::max(0, missing)), '0');
    return format.before + sign + digits + format.after;
}
