// SPDX-License-Identifier: BSD-3-Clause
// Leaks in others' code that do not grow, which LeakSanitizer is not to report. Only builds with
// it have this source; the runtime asks for these functions by their names.

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options();

// Fontconfig keeps 288 bytes of its first look-up that nothing points at any more.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}

// What a program says is tested, so the runtime says nothing of what it left out.
const char* __asan_default_options() {
    return "print_suppressions=0";
}
