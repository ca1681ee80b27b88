// SPDX-License-Identifier: BSD-3-Clause
#include "Cases.h"

#include <array>

namespace bench {

namespace {

constexpr const char* kScore = "C-###-####";

constexpr const char* kLatin = "Take #######, the last train at sunrise.\n"
                               "Every lantern along the pier had gone to\n"
                               "sleep; only the gulls, quick and jagged,\n"
                               "kept watch over the grey water and fog..";

// The dialogue field has 256 bytes with its end: 31 characters a line in an encoding of two bytes a
// character, 21 in UTF-8.
constexpr const char* kJapanese =
    "第#######カット、夜明け前の駅に最後の汽車が着いたところだよ。\n"
    "埠頭の灯りはもうみんな眠ってしまい、起きているのは海鳥ばかり。\n"
    "灰色の水面と霧の向こうから、だれかが手を振っているように見えた。\n"
    "あの人の声が聞こえたら、すぐに帆を上げて港の外へ出るつもりです。";
constexpr const char* kJapaneseUtf8 = "第#######カット、夜明けの最後の汽車です。\n"
                                      "埠頭の灯りはもう眠って、海鳥だけが鳴いた。\n"
                                      "霧の向こうからも、だれかが手を振っていた。\n"
                                      "声が聞こえたらね、すぐに帆を上げるからね。";

constexpr std::array kCases {
    TextCase { "score-100", "DejaVu Sans", kScore, true, 100, "UTF-8" },
    TextCase { "score-50", "DejaVu Sans", kScore, true, 50, "UTF-8" },
    TextCase { "latin", "DejaVu Sans", kLatin, false, 50, "UTF-8" },
    TextCase { "japanese", "Noto Sans CJK JP", kJapanese, false, 50, "CP932" },
    TextCase { "japanese-utf8", "Noto Sans CJK JP", kJapaneseUtf8, false, 50, "UTF-8" },
};

} // namespace

std::span<const TextCase> Cases() {
    return kCases;
}

CountedText::CountedText(std::string_view text) : m_bytes(text), m_counter(~kStillCounter) {
    for (std::size_t at = m_bytes.size(); at-- > 0;)
        if (m_bytes[at] == '#')
            m_digits.push_back(at);
    Set(kStillCounter);
}

bool CountedText::Set(std::uint32_t counter) {
    if (counter == m_counter)
        return false;
    m_counter = counter;
    for (std::size_t at : m_digits) {
        m_bytes[at] = static_cast<char>('0' + counter % 10);
        counter /= 10;
    }
    return true;
}

} // namespace bench
