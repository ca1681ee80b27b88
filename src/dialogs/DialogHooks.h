// SPDX-License-Identifier: BSD-3-Clause
// The three calls by which a host opens, feeds and closes the plug-in's user interface. They come in
// this order: create, notify any number of times, destroy. User-interface thread only.
#pragma once

#include <epi/epi.h>

// The text edit dialog when bit 0 of dwDialogFlags is set, else the settings panel. Always 0; the
// record's hDialogWindow is null when no window could be made.
long CreateSettingDialog(_EPIRECORD* record);
long DialogNotify(_EPIRECORD* record);
long DestroySettingDialog(_EPIRECORD* record);
