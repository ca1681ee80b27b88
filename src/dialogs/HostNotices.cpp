// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/HostNotices.h"

#include "render/TableEntry.h"

namespace dialogs {

using render::FindEntry;

void ParametersChanged(const _EPIRECORD& record) {
    if (const auto changed = FindEntry(record.pParamProcs, &EPIParamProcs::ParametersChanged))
        changed(record.hFixedParam);
}

void OptionConfirmed(const _EPIRECORD& record) {
    if (const auto option = FindEntry(record.pParamProcs, &EPIParamProcs::Option))
        option(1.0, 0);
}

void EditorOpened(const _EPIRECORD& record) {
    const auto call = FindEntry(record.pHostProcs, &EPIHostProcs::Call);
    if (call && call(1) == 0)
        call(0);
}

void ModalOpens(const _EPIRECORD& record, EPIWindowRef window) {
    if (const auto opens = FindEntry(record.pWindowProcs, &EPIWindowProcs::ModalOpens))
        opens(window);
}

void ModalEnds(const _EPIRECORD& record, EPIWindowRef window) {
    if (const auto ends = FindEntry(record.pWindowProcs, &EPIWindowProcs::ModalEnds))
        ends(window);
}

} // namespace dialogs
