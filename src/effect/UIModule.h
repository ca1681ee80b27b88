// SPDX-License-Identifier: BSD-3-Clause
// The module with the effect's dialogs. It lies beside the effect's own module and is opened when
// the first dialog is asked for, so that a machine that only renders never loads a widget library.
#pragma once

#include <cstdint>

#include <epi/epi.h>

// What the module exports under kUIModuleTableName, as data. A table that grows gets its new entries
// at the end; one whose nSize is below the size known here is refused. Each function does what the
// selector of its name asks for, takes the host's record and gives 0; the three come on the thread
// that runs the host's user interface. Exceptions of host callbacks pass through.
struct UIModuleTable {
    std::uint32_t nSize; // bytes in this table
    long (*CreateSettingDialog)(_EPIRECORD* record);
    long (*DialogNotify)(_EPIRECORD* record);
    long (*DestroySettingDialog)(_EPIRECORD* record);
};

inline constexpr char kUIModuleFileName[] = "TextOverlayUI.so";
inline constexpr char kUIModuleTableName[] = "TextOverlayUI";
extern "C" const UIModuleTable TextOverlayUI; // defined in that module alone

// Opens the module at the first call and keeps it open until the process ends: a widget library
// cannot be unloaded safely. Null when there is none; one that is there and cannot be opened is
// reported. Any thread.
const UIModuleTable* OpenUIModule();
