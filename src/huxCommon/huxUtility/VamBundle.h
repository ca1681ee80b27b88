// SPDX-License-Identifier: BSD-3-Clause
// A bundle's strings, pictures and files by name. A null bundle stands for the main bundle, a null
// subDir for the resources' top level. Nothing here throws or reports: what is not there is null or
// false.
#pragma once

#include <epi/epi.h>

#include "platform/CoreFoundation.h"
#include "platform/ui/Cursors.h"

// A reference to a file that exists.
using FSRef = FSSpec;

// The bundle that several plug-ins of a program share: Contents/Frameworks/<name>.bundle beside its
// executable. The count is the caller's.
platform::CFBundleRef vamCreateBundleCommonResource(platform::CFStringRef name);

// The text for key in the user's language, or the key itself. The count is the caller's.
platform::CFStringRef vamLoadStringFromBundle(platform::CFBundleRef bundle,
                                              platform::CFStringRef key);

// The picture in <name>.pct: a header of 512 bytes, which is skipped, then PNG data. Freed by
// KillPicture.
platform::PicHandle vamLoadPictFromBundle(platform::CFBundleRef bundle, platform::CFStringRef name,
                                          platform::CFStringRef subDir);

// Where the resource <name>.<type> lies; out is written only when it is there.
bool vamGetResourceFSRefFromBundle(FSRef* out, platform::CFBundleRef bundle,
                                   platform::CFStringRef name, platform::CFStringRef type,
                                   platform::CFStringRef subDir);
