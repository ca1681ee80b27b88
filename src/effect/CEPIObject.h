// SPDX-License-Identifier: BSD-3-Clause
// The protocol of an effect object: one virtual operation for each selector of the entry point.
#pragma once

#include <epi/epi.h>

class CEPIObject {
public:
    CEPIObject();
    CEPIObject(const CEPIObject&) = delete;
    CEPIObject& operator=(const CEPIObject&) = delete;
    virtual ~CEPIObject();

    // The results are statuses, 0 for success; here each does nothing and gives 0. The order is that
    // of the table of virtual operations, not that of the selectors.
    virtual long Init(_EPIRECORD* /*record*/) { return 0; }
    virtual long Term(_EPIRECORD* /*record*/) { return 0; }
    virtual long InitFixedParam(_EPIRECORD* /*record*/) { return 0; }
    virtual long InitSettings(_EPIRECORD* /*record*/) { return 0; }
    virtual long ParamInfo(_EPIRECORD* /*record*/) { return 0; }
    virtual long Serialize(_EPIRECORD* /*record*/) { return 0; }
    virtual long CreateSettingDialog(_EPIRECORD* /*record*/) { return 0; }
    virtual long DialogNotify(_EPIRECORD* /*record*/) { return 0; }
    virtual long DestroySettingDialog(_EPIRECORD* /*record*/) { return 0; }
    virtual long CalcRenderBound(_EPIRECORD* /*record*/) { return 0; }
    virtual long DoFilter(_EPIRECORD* /*record*/) { return 0; }
};

// The effect object that was constructed last, which the entry point drives. Not cleared when the
// object ends.
extern CEPIObject* s_pObject;
