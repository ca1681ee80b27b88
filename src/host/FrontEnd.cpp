// SPDX-License-Identifier: BSD-3-Clause
// The tables of notifications: each call goes to the process's front end.
#include <atomic>

#include "host/Tables.h"

namespace host {

namespace {

std::atomic<FrontEnd*> s_frontEnd { nullptr };

// What the front end's method says of the arguments, or the answer for those who have none.
template <auto Method, std::int32_t kNobody, class... Arguments>
std::int32_t Ask(Arguments... arguments) {
    auto* const frontEnd = TheFrontEnd();
    return frontEnd ? (frontEnd->*Method)(arguments...) : kNobody;
}

} // namespace

void SetFrontEnd(FrontEnd* frontEnd) {
    s_frontEnd = frontEnd;
}
FrontEnd* TheFrontEnd() {
    return s_frontEnd;
}

const EPIParamProcs& ParamTable() {
    static constexpr EPIParamProcs table {
        sizeof table, Ask<&FrontEnd::ParametersChanged, 0, EPIHandleRef>,
        [](double value, std::int32_t /*zero*/) { return Ask<&FrontEnd::Option, 0>(value); }
    };
    return table;
}

const EPIHostProcs& HostTable() {
    static constexpr EPIHostProcs table { sizeof table, Ask<&FrontEnd::Call, 1, std::int32_t> };
    return table;
}

const EPIWindowProcs& WindowTable() {
    static constexpr EPIWindowProcs table { sizeof table,
                                            Ask<&FrontEnd::ModalOpens, 0, EPIWindowRef>,
                                            Ask<&FrontEnd::ModalEnds, 0, EPIWindowRef> };
    return table;
}

} // namespace host
