// SPDX-License-Identifier: BSD-3-Clause
// One row of the list: a text that the user may change.
#pragma once

#include <utility>

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxDataBrowser.h"

class RowData : public HuxDataBrowserItemData {
public:
    explicit RowData(HuxString text) : m_text(std::move(text)) {}

    const HuxString& GetText() const { return m_text; }
    void SetText(HuxString text) { m_text = std::move(text); }

private:
    HuxString m_text;
};
