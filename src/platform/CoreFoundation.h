// SPDX-License-Identifier: BSD-3-Clause
// Counted strings and bundles: how the plug-in finds its own files and localized strings.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

// Objects of this header are counted. "Create" and "Copy" in a function's name give the caller a
// count to end with CFRelease; "Get" lends. Any thread.
struct CFString;
struct CFBundle;
using CFStringRef = const CFString*;
using CFBundleRef = CFBundle*;

void CFRetain(CFStringRef string);
void CFRelease(CFStringRef string);
void CFRetain(CFBundleRef bundle);
void CFRelease(CFBundleRef bundle);

// Holds a count; null is none.
struct CFReleaser {
    template <class Object>
    void operator()(Object* object) const {
        CFRelease(object);
    }
};
using StringHolder = std::unique_ptr<const CFString, CFReleaser>;
using BundleHolder = std::unique_ptr<CFBundle, CFReleaser>;

CFStringRef CFStringCreateWithUTF8(std::string_view utf8);
// The string's UTF-8 text; good as long as the string.
std::string_view CFStringGetUTF8(CFStringRef string);
// Converts to the application's text encoding with a NUL. False, with as many whole characters as
// fit, when it does not fit in size bytes or has characters that the encoding lacks; size 0 writes
// nothing.
bool CFStringGetCString(CFStringRef string, char* buffer, std::size_t size);

// Makes the bundle that holds the module with this code (a function of it) known under its
// identifier; its Info.json is read now. False, reported, when the module lies in no bundle: that
// is so for a program that links the code statically. Undone by CFBundleUnregister.
bool CFBundleRegister(const void* code);
void CFBundleUnregister(const void* code);
// The bundle at a path such as ".../TextOverlay.bundle"; null, reported, when it is none.
CFBundleRef CFBundleCreate(const std::filesystem::path& path);

// Lent; null when no registered bundle has the identifier.
CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier);
// The running program's own bundle: the folder of its executable. Lent, never null.
CFBundleRef CFBundleGetMainBundle();

const std::filesystem::path& CFBundleGetPath(CFBundleRef bundle);
std::string CFBundleGetIdentifier(CFBundleRef bundle);
std::string CFBundleGetVersion(CFBundleRef bundle);

// The string for key in the languages of the thread's text context, else in English, else value;
// null when value is null too. table null means "Localizable".
CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, std::string_view key, const char* value,
                                        const char* table);

// Resources/[subDir/][<language>.lproj/]name.type; a file for all languages goes first. Empty when
// there is none.
std::filesystem::path CFBundleCopyResourceURL(CFBundleRef bundle, std::string_view name,
                                              std::string_view type, std::string_view subDir);

} // namespace platform
