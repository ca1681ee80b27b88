// SPDX-License-Identifier: BSD-3-Clause
// One entry of a list of reusable texts: a fixed field of bytes that end with a NUL.
#pragma once

#include <cstddef>
#include <string_view>

#include <epi/epi.h>

using PopupEntry = char[64];

inline constexpr std::size_t kPopupEntries = 20; // in each list
static_assert(sizeof(_POPUPSTRING::szPreset) == kPopupEntries * sizeof(PopupEntry));
static_assert(sizeof(_POPUPSTRING::szHistory) == kPopupEntries * sizeof(PopupEntry));

// Up to the NUL; the whole field when a host's memory has none in it. Good as long as the entry.
std::string_view EntryText(const PopupEntry& entry);
// Copies as many bytes as leave room for the NUL, whatever characters they belong to, and clears the
// rest of the field.
void SetEntry(PopupEntry& entry, std::string_view bytes);
