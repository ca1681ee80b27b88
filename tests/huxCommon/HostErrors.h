// SPDX-License-Identifier: BSD-3-Clause
// Keeps what the toolkit reports to the host.
#pragma once

#include <utility>
#include <vector>

#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"
#include "support/ChainHandler.h"

namespace test {

class HostErrors {
public:
    std::vector<_HUX_ERROR> TakeAll() {
        while (platform::DeliverNextEvent()) {
        }
        return std::exchange(m_errors, {});
    }

private:
    std::vector<_HUX_ERROR> m_errors;
    const ChainHandler m_handler { platform::GetApplicationEventTarget(),
                                   { { kHuxErrorCode, kHuxErrorKind } },
                                   [this](platform::EventRef event) {
                                       m_errors.push_back(ParameterOf<_HUX_ERROR>(
                                           event, kHuxErrorCode, kHuxErrorCode));
                                       return platform::kNoErr;
                                   } };
};

} // namespace test
