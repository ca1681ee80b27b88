// SPDX-License-Identifier: BSD-3-Clause
// The toolkit's own events and the codes by which its objects are found and its commands extended.
#pragma once

#include "platform/Events.h"

// Sent to a window's own target, with "ptrg"/'etrg' and the window as direct object.
inline constexpr platform::OSType kHuxEventClassWindow = 0x48555857; // "HUXW"
inline constexpr std::uint32_t kHuxEventWindowInitialize = 1;        // attach controls, initialize
inline constexpr std::uint32_t kHuxEventWindowInitializeError = 2;   // that was refused

// What a list view asks or tells, sent to the target of the window that it lies in, with the
// list view as direct object ("----"/'ctrl'). HuxDataBrowser reads the parameters.
inline constexpr platform::OSType kHuxEventClassDataBrowser = 0x48555842; // "HUXB"
inline constexpr std::uint32_t kHuxEventDataBrowserItemData = 1;
inline constexpr std::uint32_t kHuxEventDataBrowserNotification = 2;

// Under these the objects of controls and windows are kept as properties.
inline constexpr platform::OSType kHuxPropertyCreator = 0x56454C4D; // "VELM"
inline constexpr platform::OSType kHuxPropertyObject = 0x45584441;  // "EXDA"

// Extra parameters of command events.
inline constexpr platform::OSType kHuxEventParamValue = 0x4855584E; // "HUXN", a 'long'
inline constexpr platform::OSType kHuxEventParamUserData =
    0x48584E44; // "HXND", as wide as a pointer
