// SPDX-License-Identifier: BSD-3-Clause
// The numbers of the text edit dialog's controls, which are also their command ids.
#pragma once

#include <cstdint>

#include <epi/epi.h>

namespace dialogs {

inline constexpr std::int32_t kFontPopup = 101;
inline constexpr std::int32_t kSizeField = 102;
inline constexpr std::int32_t kSizePopup = 103;
inline constexpr std::int32_t kTextColorButton = 104;
inline constexpr std::int32_t kBoxCheck = 105;
inline constexpr std::int32_t kBoxColorButton = 106;
inline constexpr std::int32_t kOpacityField = 107;
inline constexpr std::int32_t kOpacityStepper = 108;
inline constexpr std::int32_t kFirstModeRadio = 201; // score, info, character, dialogue
inline constexpr std::int32_t kScoreFormatPopup = 205;
inline constexpr std::int32_t kInfoField = 206;
inline constexpr std::int32_t kInfoPopup = 207;
inline constexpr std::int32_t kCharacterField = 208;
inline constexpr std::int32_t kCharacterPopup = 209;
inline constexpr std::int32_t kSuffixPopup = 210;
inline constexpr std::int32_t kDialogueField = 211;
inline constexpr std::int32_t kOptionCheck = 301;
inline constexpr std::int32_t kModeGroup = 500;
inline constexpr std::int32_t kPreview = 91;
inline constexpr std::int32_t kZoomInButton = 94;
inline constexpr std::int32_t kZoomOutButton = 95;
inline constexpr std::int32_t kScaleText = 96;
inline constexpr std::int32_t kPreviewModePopup = 97;
inline constexpr std::int32_t kPreviewOptionCheck = 98;

// Which text is drawn, in the order of the radio buttons.
inline constexpr std::uint32_t kModeFlags[] = { TEXT_SCORE, TEXT_INFO, TEXT_CHARACTER,
                                                TEXT_DIALOGUE };
inline constexpr std::uint32_t kAllModeFlags =
    TEXT_SCORE | TEXT_INFO | TEXT_CHARACTER | TEXT_DIALOGUE;

} // namespace dialogs
