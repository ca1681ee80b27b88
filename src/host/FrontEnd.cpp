// SPDX-License-Identifier: BSD-3-Clause
// The tables of notifications: each call goes to the process's front end.
#include <atomic>

#include "host/Tables.h"

namespace host {

namespace {

std::atomic<FrontEnd*> s_frontEnd { nullptr };

std::int32_t ParametersChanged(EPIHandleRef fixedParam) {
    auto* frontEnd = TheFrontEnd();
    return frontEnd ? frontEnd->ParametersChanged(fixedParam) : 0;
}

std::int32_t Option(double value, std::int32_t /*zero*/) {
    auto* frontEnd = TheFrontEnd();
    return frontEnd ? frontEnd->Option(value) : 0;
}

std::int32_t Call(std::int32_t flag) {
    auto* frontEnd = TheFrontEnd();
    return frontEnd ? frontEnd->Call(flag) : 1;
}

std::int32_t ModalOpens(EPIWindowRef window) {
    auto* frontEnd = TheFrontEnd();
    return frontEnd ? frontEnd->ModalOpens(window) : 0;
}

std::int32_t ModalEnds(EPIWindowRef window) {
    auto* frontEnd = TheFrontEnd();
    return frontEnd ? frontEnd->ModalEnds(window) : 0;
}

} // namespace

std::int32_t FrontEnd::ParametersChanged(EPIHandleRef /*fixedParam*/) {
    return 0;
}
std::int32_t FrontEnd::Option(double /*value*/) {
    return 0;
}
std::int32_t FrontEnd::Call(std::int32_t /*flag*/) {
    return 1;
}
std::int32_t FrontEnd::ModalOpens(EPIWindowRef /*window*/) {
    return 0;
}
std::int32_t FrontEnd::ModalEnds(EPIWindowRef /*window*/) {
    return 0;
}
void FrontEnd::FileFailed(const std::string& /*why*/) {}

void SetFrontEnd(FrontEnd* frontEnd) {
    s_frontEnd = frontEnd;
}
FrontEnd* TheFrontEnd() {
    return s_frontEnd;
}

const EPIParamProcs& ParamTable() {
    static constexpr EPIParamProcs table { sizeof table, ParametersChanged, Option };
    return table;
}

const EPIHostProcs& HostTable() {
    static constexpr EPIHostProcs table { sizeof table, Call };
    return table;
}

const EPIWindowProcs& WindowTable() {
    static constexpr EPIWindowProcs table { sizeof table, ModalOpens, ModalEnds };
    return table;
}

} // namespace host
