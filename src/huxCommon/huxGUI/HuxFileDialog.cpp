// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxFileDialog.h"

using namespace platform;

void HuxFileDialog::SetType(const HuxString& name, const char* pattern) {
    m_options.typeName = name.GetUTF8();
    m_options.typePattern = pattern;
}

void HuxFileDialog::SetTitle(const HuxString& title) {
    m_options.title = title.GetUTF8();
}

bool HuxFileDialog::Take(const std::optional<FSSpec>& file) {
    m_file = file.value_or(FSSpec {});
    return file.has_value();
}
