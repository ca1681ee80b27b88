// SPDX-License-Identifier: BSD-3-Clause
// The effect's parameters: their defaults and their byte order in archives.
#include <bit>
#include <cstring>
#include <string_view>

#include "effect/CText.h"
#include "effect/PIHandle.h"
#include "render/LocalizedString.h"
#include "render/Rounding.h"

namespace {

constexpr tagPOINT kDefaultFrame { 720, 540 };
constexpr long kSafeAreaPercent = 85;

// Where the centred safe area of a frame side starts.
std::int32_t SafeAreaStart(std::int32_t side) {
    return static_cast<std::int32_t>(side / 2 - piMulDiv(side, kSafeAreaPercent, 100) / 2);
}

template <typename Word>
void SwapWord(Word& word) {
    static_assert(sizeof(Word) == 4);
    word = static_cast<Word>(__builtin_bswap32(static_cast<std::uint32_t>(word)));
}

} // namespace

// szDialogue keeps what the memory held: a host that asks for the defaults again keeps the dialogue
// that its user has typed.
void CText::InitTextParam(_TEXTPARAM& param) {
    param.ptPos.x = SafeAreaStart(kDefaultFrame.x);
    param.ptPos.y = SafeAreaStart(kDefaultFrame.y);
    CopyLocalizedString("IDS_DEFAULTFONT", param.szFontName, sizeof param.szFontName);
    param.nFontSize = 36;
    param.crText = 0x00FFFFFF;
    param.crBack = 0;
    param.nOpacity = 50;
    param.nScoreFormat = 0;
    param.szInfoText[0] = '\0';
    param.szCharacter[0] = '\0';
    param.dwFlags = TEXT_BOX | TEXT_SCORE;
}

void CText::InitDialogParam(_TEXT_DIALOG_PARAM& param) {
    constexpr std::string_view kDirections[] = { "F.I.", "F.O.", "T.U.",  "T.B.",
                                                 "WIPE", "PAN",  "FOLLOW" };
    std::memset(&param, 0, sizeof param);
    auto* preset = param.infoPopup.szPreset;
    for (const std::string_view direction : kDirections)
        direction.copy(*preset++, sizeof *preset);
}

void CText::SwapTextParam(_TEXTPARAM& param) {
    if constexpr (std::endian::native == std::endian::big)
        return;
    SwapWord(param.ptPos.x);
    SwapWord(param.ptPos.y);
    SwapWord(param.nFontSize);
    SwapWord(param.crText);
    SwapWord(param.crBack);
    SwapWord(param.nOpacity);
    SwapWord(param.nScoreFormat);
    SwapWord(param.dwFlags);
}

long CText::InitFixedParam(_EPIRECORD* record) {
    PIHandle handle(record->pObjectProcs, record->pHandleProcs, record->hFixedParam);
    if (auto* param = static_cast<_TEXTPARAM*>(handle.Lock()))
        InitTextParam(*param);
    return 0;
}

long CText::InitSettings(_EPIRECORD* record) {
    InitDialogParam(*static_cast<_TEXT_DIALOG_PARAM*>(record->pSettings));
    return 0;
}
