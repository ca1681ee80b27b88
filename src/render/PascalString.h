// SPDX-License-Identifier: BSD-3-Clause
// The platform's length-prefixed strings, and the reading of text fields that may lack their NUL.
#pragma once

#include <cstddef>
#include <string_view>

// dst receives a length byte and at most 255 bytes of src; no NUL. It has room for 256.
void CtoPascalString(unsigned char* dst, const char* src);
void CtoPascalString(unsigned char* dst, std::string_view src);

// The text in a field of size bytes, of which it uses all when there is no NUL. Null is empty.
std::string_view FieldText(const char* field, std::size_t size);
template <std::size_t kSize>
std::string_view FieldText(const char (&field)[kSize]) {
    return FieldText(field, kSize);
}
