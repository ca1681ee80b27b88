// SPDX-License-Identifier: BSD-3-Clause
// Counted strings: UTF-8 inside, the application's text encoding at the plug-in's buffers.
#include <algorithm>
#include <atomic>

#include "platform/CoreFoundation.h"
#include "platform/TextEncoding.h"

namespace platform {

struct CFString {
    std::string utf8;
    mutable std::atomic<long> count { 1 };
};

void CFRetain(CFStringRef string) {
    string->count.fetch_add(1, std::memory_order_relaxed);
}

void CFRelease(CFStringRef string) {
    if (string->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete string;
}

CFStringRef CFStringCreateWithUTF8(std::string_view utf8) {
    return new CFString { std::string(utf8) };
}

std::string_view CFStringGetUTF8(CFStringRef string) {
    return string->utf8;
}

bool CFStringGetCString(CFStringRef string, char* buffer, std::size_t size) {
    if (size == 0)
        return false;
    const EncodedText text = EncodeText(string->utf8);
    const std::string_view part = CutToWholeCharacters(text.bytes, size - 1);
    *std::copy(part.begin(), part.end(), buffer) = '\0';
    return text.complete && part.size() == text.bytes.size();
}

} // namespace platform
