// SPDX-License-Identifier: BSD-3-Clause
// The table of aliases.
#include "platform/text/FontCatalog.h"

#include <array>

namespace platform::text {
namespace {

// Stand-ins, by design and script. Those of equal widths come first where there are any.
constexpr const char* kGothic[] = { "Noto Sans CJK JP", "Noto Sans JP", "Source Han Sans JP",
                                    "IPAPGothic",       "IPAexGothic",  "VL PGothic",
                                    "VL Gothic",        "TakaoPGothic", "IPAGothic",
                                    "BIZ UDPGothic",    "M PLUS 1p" };
constexpr const char* kFixedGothic[] = {
    "IPAGothic",        "VL Gothic",   "TakaoGothic", "BIZ UDGothic", "Noto Sans Mono CJK JP",
    "Noto Sans CJK JP", "Noto Sans JP"
};
constexpr const char* kMincho[] = { "Noto Serif CJK JP", "Noto Serif JP", "Source Han Serif JP",
                                    "IPAPMincho",        "IPAexMincho",   "TakaoPMincho",
                                    "IPAMincho",         "BIZ UDPMincho" };
constexpr const char* kFixedMincho[] = { "IPAMincho", "TakaoMincho", "BIZ UDMincho",
                                         "Noto Serif CJK JP", "Noto Serif JP" };
constexpr const char* kSans[] = { "Liberation Sans", "Arimo", "Nimbus Sans", "FreeSans",
                                  "DejaVu Sans" };
constexpr const char* kSerif[] = { "Liberation Serif", "Tinos", "Nimbus Roman", "FreeSerif",
                                   "DejaVu Serif" };
constexpr const char* kMono[] = { "Liberation Mono", "Cousine", "Nimbus Mono PS", "FreeMono",
                                  "DejaVu Sans Mono" };

constexpr const char* kMsGothic[] = { "MS Gothic", "ＭＳ ゴシック" };
constexpr const char* kMsPGothic[] = { "MS PGothic", "ＭＳ Ｐゴシック" };
constexpr const char* kMsUiGothic[] = { "MS UI Gothic" };
constexpr const char* kMsMincho[] = { "MS Mincho", "ＭＳ 明朝" };
constexpr const char* kMsPMincho[] = { "MS PMincho", "ＭＳ Ｐ明朝" };
constexpr const char* kMeiryo[] = { "Meiryo", "メイリオ", "Meiryo UI" };
constexpr const char* kYuGothic[] = { "Yu Gothic", "游ゴシック", "YuGothic", "Yu Gothic UI",
                                      "游ゴシック体" };
constexpr const char* kYuMincho[] = { "Yu Mincho", "游明朝", "YuMincho", "游明朝体" };
constexpr const char* kHiraginoKaku[] = { "Hiragino Kaku Gothic Pro",
                                          "Hiragino Kaku Gothic ProN",
                                          "Hiragino Kaku Gothic Std",
                                          "Hiragino Kaku Gothic StdN",
                                          "Hiragino Kaku Gothic Pro W3",
                                          "Hiragino Kaku Gothic ProN W3",
                                          "Hiragino Kaku Gothic Pro W6",
                                          "Hiragino Kaku Gothic ProN W6",
                                          "Hiragino Sans",
                                          "ヒラギノ角ゴ Pro",
                                          "ヒラギノ角ゴ ProN",
                                          "ヒラギノ角ゴ Pro W3",
                                          "ヒラギノ角ゴ ProN W3",
                                          "ヒラギノ角ゴ Pro W6",
                                          "ヒラギノ角ゴ ProN W6",
                                          "ヒラギノ角ゴ Std",
                                          "ヒラギノ角ゴ StdN",
                                          "ヒラギノ角ゴシック" };
constexpr const char* kHiraginoMaru[] = { "Hiragino Maru Gothic Pro", "Hiragino Maru Gothic ProN",
                                          "ヒラギノ丸ゴ Pro",         "ヒラギノ丸ゴ ProN",
                                          "ヒラギノ丸ゴ Pro W4",      "ヒラギノ丸ゴ ProN W4" };
constexpr const char* kHiraginoMincho[] = { "Hiragino Mincho Pro",    "Hiragino Mincho ProN",
                                            "Hiragino Mincho Pro W3", "Hiragino Mincho ProN W3",
                                            "Hiragino Mincho Pro W6", "Hiragino Mincho ProN W6",
                                            "ヒラギノ明朝 Pro",       "ヒラギノ明朝 ProN",
                                            "ヒラギノ明朝 Pro W3",    "ヒラギノ明朝 ProN W3",
                                            "ヒラギノ明朝 Pro W6",    "ヒラギノ明朝 ProN W6" };
constexpr const char* kOsaka[] = { "Osaka" };
constexpr const char* kOsakaMono[] = { "Osaka-Mono", "Osaka－等幅", "Osaka−等幅" };
constexpr const char* kArial[] = { "Arial" };
constexpr const char* kHelvetica[] = { "Helvetica", "Helvetica Neue" };
constexpr const char* kTimes[] = { "Times" };
constexpr const char* kTimesNewRoman[] = { "Times New Roman" };
constexpr const char* kCourier[] = { "Courier" };
constexpr const char* kCourierNew[] = { "Courier New" };

constexpr std::array kTable = {
    AliasEntry { kMsGothic, kFixedGothic },  AliasEntry { kMsPGothic, kGothic },
    AliasEntry { kMsUiGothic, kGothic },     AliasEntry { kMsMincho, kFixedMincho },
    AliasEntry { kMsPMincho, kMincho },      AliasEntry { kMeiryo, kGothic },
    AliasEntry { kYuGothic, kGothic },       AliasEntry { kYuMincho, kMincho },
    AliasEntry { kHiraginoKaku, kGothic },   AliasEntry { kHiraginoMaru, kGothic },
    AliasEntry { kHiraginoMincho, kMincho }, AliasEntry { kOsaka, kGothic },
    AliasEntry { kOsakaMono, kFixedGothic }, AliasEntry { kArial, kSans },
    AliasEntry { kHelvetica, kSans },        AliasEntry { kTimes, kSerif },
    AliasEntry { kTimesNewRoman, kSerif },   AliasEntry { kCourier, kMono },
    AliasEntry { kCourierNew, kMono },
};

} // namespace

std::span<const AliasEntry> AliasTable() {
    return kTable;
}

} // namespace platform::text
