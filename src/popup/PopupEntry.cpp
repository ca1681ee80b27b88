// SPDX-License-Identifier: BSD-3-Clause
#include "popup/PopupEntry.h"

#include <algorithm>
#include <cstring>

std::string_view EntryText(const PopupEntry& entry) {
    return { entry, strnlen(entry, sizeof entry) };
}

void SetEntry(PopupEntry& entry, std::string_view bytes) {
    const std::size_t length = std::min(bytes.size(), sizeof entry - 1);
    std::memmove(entry, bytes.data(), length);
    std::memset(entry + length, 0, sizeof entry - length);
}
