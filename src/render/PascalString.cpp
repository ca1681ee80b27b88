// SPDX-License-Identifier: BSD-3-Clause
// Length-prefixed strings and text fields.
#include "render/PascalString.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kMaxLength = 255;

} // namespace

void CtoPascalString(unsigned char* dst, const char* src) {
    CtoPascalString(dst, FieldText(src, kMaxLength));
}

void CtoPascalString(unsigned char* dst, std::string_view src) {
    const std::size_t length = std::min(src.size(), kMaxLength);
    dst[0] = static_cast<unsigned char>(length);
    std::copy_n(src.data(), length, dst + 1);
}

std::string_view FieldText(const char* field, std::size_t size) {
    return field ? std::string_view(field, strnlen(field, size)) : std::string_view();
}
