// SPDX-License-Identifier: BSD-3-Clause
#include "controls/CommandLog.h"

#include <iostream>
#include <limits>

using namespace platform;

void CommandLog::Add(std::string_view line) {
    std::cout << line << std::endl; // whoever reads along does so at once
    if (!m_text.empty())
        m_text += '\r';
    m_text += line;
    SetText(HuxString::FromUTF8(m_text));
    constexpr auto kEnd = std::numeric_limits<int>::max();
    Do(&EditField::Select, { kEnd, kEnd }); // scrolls there
}

void CommandLog::Clear() {
    m_text.clear();
    SetText(HuxString());
}
