// SPDX-License-Identifier: BSD-3-Clause
// The base of what a row of a list view stands for. Made with new and handed to the view, which owns
// it from then on.
#pragma once

#include "platform/ui/DataBrowser.h"

class HuxDataBrowserItemData {
public:
    HuxDataBrowserItemData() = default;
    HuxDataBrowserItemData(const HuxDataBrowserItemData&) = delete;
    HuxDataBrowserItemData& operator=(const HuxDataBrowserItemData&) = delete;
    virtual ~HuxDataBrowserItemData() = default;

    platform::DataBrowserItemID GetItemID() const { return m_item; } // 0 before it is a row

private:
    friend class HuxDataBrowser;

    platform::DataBrowserItemID m_item = platform::kDataBrowserNoItem;
};
