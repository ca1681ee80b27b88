// SPDX-License-Identifier: BSD-3-Clause
// What the dialogs tell the host, each where the host wants to know: a table or an entry that is not
// there is skipped.
#pragma once

#include <epi/epi.h>

namespace dialogs {

void ParametersChanged(const _EPIRECORD& record);
// The dialog was confirmed with its option on.
void OptionConfirmed(const _EPIRECORD& record);
// A text edit dialog's window was made.
void EditorOpened(const _EPIRECORD& record);
void ModalOpens(const _EPIRECORD& record, EPIWindowRef window);
void ModalEnds(const _EPIRECORD& record, EPIWindowRef window);

} // namespace dialogs
