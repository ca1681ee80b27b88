// SPDX-License-Identifier: BSD-3-Clause
// A plug-in that writes down which selectors came and misbehaves as the environment asks when it is
// loaded. It draws its font size into the first byte of each row.
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include <epi/epi.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

std::string s_trouble;
std::string s_log;
int s_holder;

bool Is(const char* trouble) {
    return s_trouble == trouble;
}

long Init(_EPIRECORD* record) {
    if (const char* trouble = std::getenv("TELOP_FAKE_TROUBLE"))
        s_trouble = trouble;
    auto& info = *record->pPluginInfo;
    info.nSignature = EPI_FOUR_CC('F', 'A', 'K', 'E');
    std::memset(info.szCategory, 'c', sizeof info.szCategory); // and no end
    std::strcpy(info.szName, "Fake");
    info.nFixedParamSize = Is("wild sizes") ? -5 : Is("other parameters") ? 100 : 480;
    info.nSettingsSize = 100;
    return 0;
}

long ParamInfo(_EPIRECORD* record) {
    if (record->nParamIndex < 2)
        *record->pParamDesc = { {}, 4, "Number", -1, 1, 0.5 };
    return 0;
}

long InitFixedParam(_EPIRECORD* record) {
    auto* param = static_cast<_TEXTPARAM*>(record->pHandleProcs->Lock(record->hFixedParam));
    param->nFontSize = 7;
    record->pHandleProcs->Unlock(record->hFixedParam);
    return 0;
}

long DoFilter(_EPIRECORD* record) {
    if (Is("throws"))
        throw std::runtime_error("no paint");
    const auto& images = *record->pOffscreenProcs;
    auto* const image = record->hDestination;
    const auto* param =
        static_cast<const _TEXTPARAM*>(record->pHandleProcs->Lock(record->hFixedParam));
    images.Lock(image, 1);
    auto* row = static_cast<std::uint8_t*>(images.BaseAddress(image));
    for (int y = 0; y < images.Height(image); ++y, row += images.RowBytes(image))
        *row = static_cast<std::uint8_t>(param->nFontSize);
    if (!Is("leaks"))
        images.Unlock(image);
    record->pHandleProcs->Unlock(record->hFixedParam);
    return Is("status") ? 7 : 0;
}

long Serialize(_EPIRECORD* record) {
    auto* param = record->pHandleProcs->Lock(record->hFixedParam);
    if (record->pArchiveProcs->IsLoading(record->hArchive))
        record->pArchiveProcs->Read(record->hArchive, param, 480);
    else
        record->pArchiveProcs->Write(record->hArchive, param, Is("short save") ? 10 : 480);
    record->pHandleProcs->Unlock(record->hFixedParam);
    return Is("serialize status") ? 3 : 0;
}

long CreateSettingDialog(_EPIRECORD* record) {
    if (Is("no dialog"))
        return 0;
    record->pDialogHolder = &s_holder;
    if (!Is("no window"))
        record->hDialogWindow = reinterpret_cast<EPIWindowRef>(&s_holder);
    return 0;
}

} // namespace

EXPORTED auto CallLog() -> const char* {
    return s_log.c_str();
}

EXPORTED long EntryPoint(long selector, _EPIRECORD* record) {
    // Frames come on several threads and are not written down.
    if (selector == epiDoFilter)
        return DoFilter(record);
    s_log += std::to_string(selector) + " ";
    switch (selector) {
    case epiInit:
        return Init(record);
    case epiInitFixedParam:
        return InitFixedParam(record);
    case epiParamInfo:
        return ParamInfo(record);
    case epiSerialize:
        return Serialize(record);
    case epiCreateSettingDialog:
        return CreateSettingDialog(record);
    case epiDialogNotify:
        record->nNotifyResult = record->nNotifyCode * 10;
        return 0;
    default:
        return 0;
    }
}
