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

bool HuxGetFileDialog::Run() {
    m_files = HuxArray<FSSpec>(RunGetFileDialog(m_options));
    return !m_files.IsEmpty();
}

void HuxPutFileDialog::SetFileName(const HuxString& name) {
    m_options.fileName = name.GetUTF8();
}

bool HuxPutFileDialog::Run() {
    const std::vector<FSSpec> files = RunPutFileDialog(m_options);
    m_file = files.empty() ? FSSpec {} : files.front();
    return !files.empty();
}
