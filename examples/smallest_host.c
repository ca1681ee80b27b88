/* SPDX-License-Identifier: BSD-3-Clause */
/*
 * The smallest host: loads the text overlay, draws one text into a frame in memory and writes the
 * frame as a picture. Everything that a host has to bring is in this file; it needs epi/epi.h and
 * nothing else.
 *
 *     smallest-host TextOverlay.bundle/Contents/Linux-x86_64/TextOverlay.so picture.ppm
 */
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <epi/epi.h>

/* -------------------------------------------------------------------------------------- frames */

/* The effect gets a frame as an EPIImageRef and asks the callbacks below about it. Pixels have four
   bytes: alpha, red, green, blue. Any other order is told by the table's ChannelIndices. */
typedef struct Frame {
    int32_t width;
    int32_t height;
    uint8_t* pixels;
} Frame;

enum { kBytesPerPixel = 4 };

static Frame* FrameOf(EPIImageRef image) {
    return (Frame*)image;
}

static size_t PixelCount(const Frame* frame) {
    return (size_t)frame->width * (size_t)frame->height;
}
static uint8_t* PixelAt(const Frame* frame, size_t index) {
    return frame->pixels + index * kBytesPerPixel;
}

/* Memory of this host stays where it is, so locking has nothing to do. */
static int32_t LockFrame(EPIImageRef image, int32_t writable) {
    (void)image;
    (void)writable;
    return 1;
}
static void UnlockFrame(EPIImageRef image) {
    (void)image;
}
static int32_t FrameWidth(EPIImageRef image) {
    return FrameOf(image)->width;
}
static int32_t FrameHeight(EPIImageRef image) {
    return FrameOf(image)->height;
}
static int32_t FrameDepth(EPIImageRef image) {
    (void)image;
    return 8 * kBytesPerPixel;
}
static int32_t FrameRowBytes(EPIImageRef image) {
    return FrameOf(image)->width * kBytesPerPixel;
}
static void* FrameBaseAddress(EPIImageRef image) {
    return FrameOf(image)->pixels;
}

/* ------------------------------------------------------------------------------------- handles */

/* The effect's parameters lie in memory that it locks while it looks at them. Here a handle simply
   is the address of that memory. */
static void* LockHandle(EPIHandleRef handle) {
    return handle;
}
static void UnlockHandle(EPIHandleRef handle) {
    (void)handle;
}

/* -------------------------------------------------------------------------------------- tables */

/* An entry that is null is absent. Drawing asks for no more than these; dialogs and archives need
   the rest. A table that ends before ChannelIndices says so with its size. */
static const EPIOffscreenProcs kOffscreenProcs = {
    .nSize = offsetof(EPIOffscreenProcs, ChannelIndices),
    .Lock = LockFrame,
    .Unlock = UnlockFrame,
    .Width = FrameWidth,
    .Height = FrameHeight,
    .Depth = FrameDepth,
    .RowBytes = FrameRowBytes,
    .BaseAddress = FrameBaseAddress,
};
static const EPIHandleProcs kHandleProcs = {
    .nSize = sizeof(EPIHandleProcs),
    .Lock = LockHandle,
    .Unlock = UnlockHandle,
};
static const EPIObjectProcs kObjectProcs = { .nSize = sizeof(EPIObjectProcs) };

/* ----------------------------------------------------------------------------------- the steps */

/* 1. Load the module. It stays loaded until the program ends. */
static EPIEntryPoint LoadEffect(const char* path) {
    EPIEntryPoint entry = NULL;
    void* module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (module)
        *(void**)&entry = dlsym(module, EPI_ENTRY_POINT_NAME);
    if (!entry)
        fprintf(stderr, "smallest-host: %s\n", dlerror());
    return entry;
}

/* 2. and 3. Ask how much memory the effect wants for its parameters, and let it write its defaults.
   The answer is the parameters, which hFixedParam keeps; null, with a message, without them. */
static _TEXTPARAM* MakeParameters(EPIEntryPoint effect, _EPIRECORD* record) {
    EPIPluginInfo info = { 0 };
    record->pPluginInfo = &info;
    effect(epiInit, record);
    record->pPluginInfo = NULL;
    printf("%s: %s\n", info.szCategory, info.szName);
    if (info.nFixedParamSize != (int32_t)sizeof(_TEXTPARAM)) {
        fprintf(stderr, "smallest-host: this is another effect, with parameters of its own\n");
        return NULL;
    }
    _TEXTPARAM* param = calloc(1, sizeof *param);
    record->hFixedParam = (EPIHandleRef)param;
    if (param)
        effect(epiInitFixedParam, record);
    else
        perror("smallest-host");
    return param;
}

static void SetText(_TEXTPARAM* param) {
    param->ptPos.x = 40;
    param->ptPos.y = 40;
    param->nFontSize = 48;
    param->crText = 0x00FFFFFF; /* white */
    param->crBack = 0x00602010; /* on dark blue: the bytes are blue, green, red */
    param->nOpacity = 100;
    param->dwFlags = TEXT_INFO | TEXT_BOX;
    strcpy(param->szInfoText, "Hello, frame");
}

/* A ramp, so that one sees where the text has replaced it. */
static void PaintBackground(Frame* frame) {
    for (int32_t y = 0; y < frame->height; ++y) {
        for (int32_t x = 0; x < frame->width; ++x) {
            uint8_t* pixel = PixelAt(frame, (size_t)y * (size_t)frame->width + (size_t)x);
            pixel[0] = 255;
            pixel[1] = (uint8_t)(80 + x * 120 / frame->width);
            pixel[2] = (uint8_t)(100 + y * 120 / frame->height);
            pixel[3] = 120;
        }
    }
}

/* 4. Draw the text into the frame. pParamValues holds the animated parameters at this frame: the
   apply switch. At scale 1 the text lies where ptPos says. */
static long DrawFrame(EPIEntryPoint effect, _EPIRECORD* record, Frame* frame) {
    const double apply = 1.0;
    record->pParamValues = &apply;
    record->hDestination = (EPIImageRef)frame;
    record->dScale = 1.0;
    record->nFrameWidth = frame->width;
    record->nFrameHeight = frame->height;
    long status = effect(epiDoFilter, record);
    record->pParamValues = NULL;
    return status;
}

static int WritePicture(const Frame* frame, const char* path) {
    FILE* file = fopen(path, "wb");
    if (!file) {
        perror(path);
        return 0;
    }
    fprintf(file, "P6\n%d %d\n255\n", (int)frame->width, (int)frame->height);
    for (size_t i = 0; i < PixelCount(frame); ++i)
        fwrite(PixelAt(frame, i) + 1, 1, 3, file);
    int failed = ferror(file);
    failed |= fclose(file);
    if (failed)
        perror(path);
    return !failed;
}

static int Run(EPIEntryPoint effect, Frame* frame, const char* path) {
    _EPIRECORD record = { 0 };
    record.pObjectProcs = &kObjectProcs;
    record.pOffscreenProcs = &kOffscreenProcs;
    record.pHandleProcs = &kHandleProcs;

    _TEXTPARAM* param = MakeParameters(effect, &record);
    int done = 0;
    if (param) {
        SetText(param);
        PaintBackground(frame);
        done = DrawFrame(effect, &record, frame) == 0 && WritePicture(frame, path);
    }
    effect(epiTerm, &record);
    free(param);
    return done;
}

int main(int argc, char** argv) {
    if (argc != 3) {
        fprintf(stderr, "usage: smallest-host MODULE PICTURE.ppm\n");
        return 2;
    }
    Frame frame = { .width = 480, .height = 160 };
    frame.pixels = malloc(PixelCount(&frame) * kBytesPerPixel);
    if (!frame.pixels)
        perror("smallest-host");
    EPIEntryPoint effect = LoadEffect(argv[1]);
    int done = effect && frame.pixels && Run(effect, &frame, argv[2]);
    free(frame.pixels);
    return done ? 0 : 1;
}
