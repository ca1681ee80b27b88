// SPDX-License-Identifier: BSD-3-Clause
// What screen readers are told about the widgets of our own classes.
#pragma once

namespace platform {

void InstallAccessibleRoles(); // once for the process, however often it is called

} // namespace platform
