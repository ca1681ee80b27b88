// SPDX-License-Identifier: BSD-3-Clause
// References to what a user interface is made of, and the record that a command event carries. Knows
// no display, so that what handles commands runs and is tested without one.
#pragma once

#include <cstdint>

#include <epi/epi.h>

#include "platform/Events.h"

namespace platform {

struct OpaqueControl;
struct OpaqueMenu;
struct OpaqueDialog;
struct OpaqueHIObject;
using WindowRef = EPIWindowRef;
using ControlRef = OpaqueControl*;
using MenuRef = OpaqueMenu*;
using DialogRef = OpaqueDialog*;     // a standard alert
using HIObjectRef = OpaqueHIObject*; // any of the above
using MenuItemIndex = std::uint16_t; // from 1

// Every reference above is a number that is never given again, so one of something that is gone is
// found out, not followed.

inline constexpr OSType kEventClassCommand = 0x636D6473; // "cmds"
inline constexpr std::uint32_t kEventCommandProcess = 1;
inline constexpr std::uint32_t kEventCommandUpdateStatus = 2;

inline constexpr OSType kEventParamDirectObject = 0x2D2D2D2D; // "----"
inline constexpr OSType kTypeHICommand = 0x68636D64;          // "hcmd"
inline constexpr OSType kEventParamKeyModifiers = 0x6B6D6F64; // "kmod"
inline constexpr OSType kTypeUInt32 = 0x6D61676E;             // "magn"
inline constexpr OSType kTypeSInt32 = 0x6C6F6E67;             // "long"

// Where a command comes from: bits of HICommandExtended::attributes.
inline constexpr std::uint32_t kHICommandFromMenu = 1;
inline constexpr std::uint32_t kHICommandFromControl = 2;
inline constexpr std::uint32_t kHICommandFromWindow = 4;

inline constexpr std::uint32_t kHICommandOK = 0x6F6B2020;        // "ok  "
inline constexpr std::uint32_t kHICommandCancel = 0x6E6F7421;    // "not!"
inline constexpr std::uint32_t kHICommandUndo = 0x756E646F;      // "undo"
inline constexpr std::uint32_t kHICommandRedo = 0x7265646F;      // "redo"
inline constexpr std::uint32_t kHICommandCut = 0x63757420;       // "cut "
inline constexpr std::uint32_t kHICommandCopy = 0x636F7079;      // "copy"
inline constexpr std::uint32_t kHICommandPaste = 0x70617374;     // "past"
inline constexpr std::uint32_t kHICommandSelectAll = 0x73616C6C; // "sall"
inline constexpr std::uint32_t kHICommandClear = 0x636C6561;     // "clea"

#pragma pack(push, 1)
// The direct object of a command event. Which of source is meant, attributes say.
struct HICommandExtended {
    std::uint32_t attributes;
    std::uint32_t commandID;
    union Source {
        ControlRef control;
        WindowRef window;
        struct Menu {
            MenuRef menuRef;
            MenuItemIndex menuItemIndex;
        } menu;
    } source;
};
#pragma pack(pop)
static_assert(sizeof(HICommandExtended) == 10 + sizeof(void*)); // 14 bytes where pointers have 4

} // namespace platform
