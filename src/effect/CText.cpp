// SPDX-License-Identifier: BSD-3-Clause
// The one effect object: what it tells the host about itself, its parameters and their way into
// archives, one frame, and the dialogs, which belong to the user interface module.
#include "effect/CText.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <string_view>

#include "effect/PIArchive.h"
#include "effect/PIHandle.h"
#include "effect/UIModule.h"
#include "render/LocalizedString.h"
#include "render/PIOffscreen.h"
#include "render/Rounding.h"
#include "render/TextFields.h"

// Constructed as the module is loaded. Whoever links this code from a library asks for the symbol,
// because nothing else refers to the object by its name.
CText s_object;

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

// Has the parameters in the byte order of archives for as long as it lives.
class ArchiveOrder {
public:
    explicit ArchiveOrder(_TEXTPARAM& param) : m_param(param) { CText::SwapTextParam(m_param); }
    ArchiveOrder(const ArchiveOrder&) = delete;
    ArchiveOrder& operator=(const ArchiveOrder&) = delete;
    ~ArchiveOrder() { CText::SwapTextParam(m_param); }

private:
    _TEXTPARAM& m_param;
};

PIHandle ParamHandle(const _EPIRECORD& record) {
    return { record.pObjectProcs, record.pHandleProcs, record.hFixedParam };
}

// The switch is on when the value's integer part is not 0: NaN is off, infinite and huge values are
// on.
bool IsApplied(const _EPIRECORD& record) {
    return std::fabs(record.pParamValues[0]) >= 1.0;
}

} // namespace

CText::~CText() = default;

long CText::Init(_EPIRECORD* record) {
    EPIPluginInfo& info = *record->pPluginInfo;
    info.nSignature = EPI_FOUR_CC('T', 'E', 'X', 'T');
    info.nInfo1 = 2;
    info.nInfo2 = 1;
    info.nFixedParamSize = sizeof(_TEXTPARAM);
    info.nSettingsSize = sizeof(_TEXT_DIALOG_PARAM);
    CopyLocalizedString("IDS_CATEGORY", info.szCategory, sizeof info.szCategory);
    CopyLocalizedString("IDS_FILTER", info.szName, sizeof info.szName);
    return 0;
}

long CText::Term(_EPIRECORD* /*record*/) {
    return 0;
}

// The apply switch is the only parameter that the host animates.
long CText::ParamInfo(_EPIRECORD* record) {
    if (record->nParamIndex != 0)
        return 0;
    EPIParamDesc& param = *record->pParamDesc;
    param.nKind = 4;
    CopyLocalizedString("IDS_PARAM_APPLY", param.szName, sizeof param.szName);
    param.dMinimum = 0.0;
    param.dMaximum = 1.0;
    param.dDefault = 0.0;
    return 0;
}

// szDialogue keeps what the memory held: a host that asks for the defaults again keeps the dialogue
// that its user has typed.
void CText::InitTextParam(_TEXTPARAM& param) {
    param.ptPos = { SafeAreaStart(kDefaultFrame.x), SafeAreaStart(kDefaultFrame.y) };
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
    PIHandle handle = ParamHandle(*record);
    if (auto* param = static_cast<_TEXTPARAM*>(handle.Lock()))
        InitTextParam(*param);
    return 0;
}

long CText::InitSettings(_EPIRECORD* record) {
    InitDialogParam(*static_cast<_TEXT_DIALOG_PARAM*>(record->pSettings));
    return 0;
}

// The archive's framing is the host's, so it alone can tell whether an entry was whole. A read that
// ends early leaves the fields that it did not reach as they were: they change their order with the
// others before it and after it. The host may change the buffer that it writes, so it gets a copy.
long CText::Serialize(_EPIRECORD* record) {
    PIArchive archive(record->pObjectProcs, record->pArchiveProcs, record->hArchive);
    PIHandle handle = ParamHandle(*record);
    auto* param = static_cast<_TEXTPARAM*>(handle.Lock());
    if (!param)
        return 0;
    if (archive.IsLoading()) {
        const ArchiveOrder order(*param);
        archive.Read(param, sizeof *param);
    } else {
        _TEXTPARAM copy = *param;
        SwapTextParam(copy);
        archive.Write(&copy, sizeof copy);
    }
    return 0;
}

// Makes sure that what the renderer reads ends where its field ends, and hands it over. bInfoPresent is
// not asked: a host that has no information strings leaves them empty.
long CText::DoFilter(_EPIRECORD* record) {
    PIOffscreen image(record->pObjectProcs, record->pOffscreenProcs, record->hDestination, 0);
    PIHandle handle = ParamHandle(*record);
    const auto* param = static_cast<const _TEXTPARAM*>(handle.Lock());
    if (!param || !IsApplied(*record))
        return 0;
    _TEXTPARAM text = render::TerminatedCopy(*param);
    const render::InfoStrings infos(*record);
    tagPOINT origin = record->ptOrigin; // the packed record gives no address that may be kept
    return DoText(&image, &text, nullptr, infos.Get(0), infos.Get(1), infos.Get(2), infos.Get(3),
                  record->dScale, &origin);
}

// A host has to expect a dialog without a window, so a machine without a display is no error.
long CText::CreateSettingDialog(_EPIRECORD* record) {
    if (const UIModuleTable* module = OpenUIModule())
        return module->CreateSettingDialog(record);
    record->hDialogWindow = nullptr;
    record->pDialogHolder = nullptr;
    return 0;
}

long CText::DialogNotify(_EPIRECORD* record) {
    const UIModuleTable* module = OpenUIModule();
    return module ? module->DialogNotify(record) : 0;
}

long CText::DestroySettingDialog(_EPIRECORD* record) {
    const UIModuleTable* module = OpenUIModule();
    return module ? module->DestroySettingDialog(record) : 0;
}
