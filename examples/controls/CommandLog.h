// SPDX-License-Identifier: BSD-3-Clause
// The commands that arrived, one a line, in a scrolling text and on the standard output.
#pragma once

#include <string>
#include <string_view>

#include "huxCommon/huxGUI/HuxScrollEditText.h"

class CommandLog : public HuxScrollEditText {
public:
    void Add(std::string_view line); // UTF-8
    void Clear();

private:
    std::string m_text; // lines ended by CR
};
