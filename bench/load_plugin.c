/* SPDX-License-Identifier: BSD-3-Clause */
/*
 * Prints how many microseconds it takes to load a plug-in's module and ask it what it is, once, in a
 * process that has none of its libraries yet.
 *   telop-bench-load .../TextOverlay.so
 */
#define _POSIX_C_SOURCE 200809L

#include <dlfcn.h>
#include <stdio.h>
#include <time.h>

#include <epi/epi.h>

static double Microseconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (double)now.tv_sec * 1e6 + (double)now.tv_nsec / 1e3;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: telop-bench-load MODULE\n");
        return 2;
    }
    EPIPluginInfo info = { 0 };
    _EPIRECORD record = { 0 };
    record.pPluginInfo = &info;

    const double start = Microseconds();
    void* const module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        fprintf(stderr, "telop-bench-load: %s\n", dlerror());
        return 1;
    }
    EPIEntryPoint entry = NULL;
    *(void**)&entry = dlsym(module, EPI_ENTRY_POINT_NAME);
    if (!entry || entry(epiInit, &record) != 0 || info.nFixedParamSize <= 0) {
        fprintf(stderr, "telop-bench-load: the module does not answer\n");
        return 1;
    }
    printf("%.1f\n", Microseconds() - start);
    return 0;
}
