// SPDX-License-Identifier: BSD-3-Clause
// The callback tables over the host's objects, and the hooks through which a front end takes part.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <epi/epi.h>

namespace host {

// Whether the image table has the two entries that came late: channel indices and stretch.
enum class LateEntries { kPresent, kAbsent };

const EPIObjectProcs& ObjectTable();
const EPIOffscreenProcs& OffscreenTable(LateEntries late);
const EPIArchiveProcs& ArchiveTable();
const EPIHandleProcs& HandleTable();
const EPIParamProcs& ParamTable();
const EPIHostProcs& HostTable();
const EPIWindowProcs& WindowTable();

// What a program with a user interface hears from open dialogs; all on the user-interface thread.
// The results go back to the plug-in.
class FrontEnd {
public:
    virtual ~FrontEnd() = default;
    virtual std::int32_t ParametersChanged(EPIHandleRef /*fixedParam*/) { return 0; }
    virtual std::int32_t Option(double /*value*/) { return 0; }
    // A text edit dialog opens: called with 1 and, when that gives 0, again with 0.
    virtual std::int32_t Call(std::int32_t /*flag*/) { return 1; }
    virtual std::int32_t ModalOpens(EPIWindowRef /*window*/) { return 0; }
    virtual std::int32_t ModalEnds(EPIWindowRef /*window*/) { return 0; }
    // A file that a plug-in opened could not be read or replaced; it is as it was. One sentence for
    // people that names it. Plug-ins know only that it failed, so it is the host that says why.
    virtual void FileFailed(const std::string& /*why*/) {}
};

// The process's front end, lent; null (the start) is none: notifications go nowhere and Call gives
// 1. Set on the user-interface thread before the effects whose dialogs it serves are made.
void SetFrontEnd(FrontEnd* frontEnd);
FrontEnd* TheFrontEnd();

// A zeroed record with the tables in it. The tables of notifications are null without a front end.
_EPIRECORD MakeRecord(LateEntries late = LateEntries::kPresent);

// Puts one of the score line's parts (0 to 3) into a record. One that does not fit is cut, and false
// with the reason.
bool SetInfoString(_EPIRECORD& record, std::size_t index, std::string_view text, std::string& why);

} // namespace host
