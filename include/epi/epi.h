/* SPDX-License-Identifier: BSD-3-Clause */
/*
 * The whole boundary between a host and the text overlay effect: the record, the callback tables,
 * the effect's parameters and the one exported function. C11 and C++20, complete by itself.
 *
 * Order of calls
 *
 *   1  load       Open the module and look up "EntryPoint".
 *   2  describe   epiInit, then epiParamInfo for each nParamIndex. The blocks that pPluginInfo and
 *                 pParamDesc point at receive the answers.
 *   3  allocate   Make a handle of nFixedParamSize bytes (hFixedParam) and a block of nSettingsSize
 *                 bytes (pSettings), both zeroed; fill them with epiInitFixedParam and
 *                 epiInitSettings, or load the handle with epiSerialize.
 *   4  render     epiDoFilter, once for each frame. Any number of threads may render at once, each
 *                 with a record and an image of its own.
 *   5  edit       epiCreateSettingDialog, epiDialogNotify any number of times,
 *                 epiDestroySettingDialog, in this order, one dialog for each record.
 *   6  save       epiSerialize with an archive that is being written. May come at any time.
 *   7  stop       epiTerm, then unload the module.
 *
 * Memory
 *
 *   Everything in the record belongs to the host but pDialogHolder, which the effect allocates and
 *   frees. The effect keeps no pointer, reference or handle of the host beyond one call, except the
 *   record's own copies inside an open dialog.
 *
 * Layout
 *
 *   The record is packed to 1 byte. Where pointers have 32 bits it has 460 bytes and its integers
 *   are in the machine's own order, so that a 32-bit big-endian build is the original format. Where
 *   pointers have 64 bits the order of the fields is the same, each pointer and each reference is 8
 *   bytes wide and every other field and every gap keeps its size: 532 bytes.
 *   Slot k of a callback table lies k pointer widths from its start. Slot 0 is the table's size in
 *   bytes in its first 32 bits; a null entry, and an entry past that size, is absent.
 *
 * Tags of the contracts below
 *
 *   [render]   called from whichever thread called the effect, several at once for different images
 *   [ui]       called on the thread that runs the host's user interface
 *   [in]       the host fills the field before the call     [out]  the effect fills it
 */
#ifndef EPI_EPI_H
#define EPI_EPI_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#define EPI_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
#define EPI_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif

/* Grows in its low half when something is added that older hosts may ignore. */
#define EPI_VERSION 0x00010000

/* The name under which a module exports its entry function. */
#define EPI_ENTRY_POINT_NAME "EntryPoint"

/* ------------------------------------------------------------------ references and small types */

/* References are the host's own: the effect compares them with null and hands them back. */
typedef void* EPIObjectRef; /* what the object table creates: an image or an archive */
typedef struct EPIOpaqueImage* EPIImageRef;
typedef struct EPIOpaqueHandle* EPIHandleRef;
typedef struct EPIOpaqueArchive* EPIArchiveRef;
typedef struct EPIOpaqueWindow* EPIWindowRef; /* a window of the platform layer */

typedef struct tagPOINT {
    int32_t x;
    int32_t y;
} tagPOINT;

/* left and top lie inside, right and bottom outside. */
typedef struct tagRECT {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
} tagRECT;

/* Red in bits 0-7, green in 8-15, blue in 16-23. */
typedef uint32_t COLORREF;

/* A file: a path in UTF-8, ended by a NUL. */
typedef struct FSSpec {
    char path[4096];
} FSSpec;

/* A four-character code, first character in the high byte. */
#define EPI_FOUR_CC(a, b, c, d)                                                                    \
    (((uint32_t)(a) << 24) | ((uint32_t)(b) << 16) | ((uint32_t)(c) << 8) | (uint32_t)(d))

/* ---------------------------------------------------------------------------- callback tables */

/* Kinds of objects that the object table creates. */
enum { epiObjectImage = 1, epiObjectArchive = 2 };

/* Host objects. Dialogs make some; for the rest of the effect the table may be empty. */
typedef struct EPIObjectProcs {
    uint32_t nSize; /* bytes in this table */
    /* Makes an object of the kind; null when there is no memory. The caller releases it. [ui] */
    EPIObjectRef (*Create)(int32_t kind);
    /* Frees an object that Create made, with the kind it was made as. [ui] */
    void (*Release)(EPIObjectRef object, int32_t kind);
} EPIObjectProcs;

/*
 * Images. Row 0 is the top row. A pixel has depth / 8 bytes: 24 bits hold three 8-bit channels, 32
 * bits four 8-bit channels, 64 bits four 16-bit channels in the machine's order, full at 65535. The
 * alpha, where there is one, is straight. The size, the depth and the row bytes of an image do not
 * change while it is locked.
 */
typedef struct EPIOffscreenProcs {
    /* 46 slots or more (184 bytes with 32-bit pointers, 368 with 64-bit ones) say that
       ChannelIndices and Stretch are there. */
    uint32_t nSize;
    /* Gives an image that the object table made its pixels: cleared, of the size and depth, for
       that many dots in an inch (the previews ask for 144; a host may ignore it). What it had
       before is gone. Non-zero is success. Null: previews stay empty. [ui] */
    int32_t (*Allocate)(EPIImageRef image, int32_t width, int32_t height, int32_t depth,
                        double dotsPerInch);
    /* Pins the pixels in memory until Unlock; writable is 1 when they will be changed. Locks
       count: each is undone by one Unlock. The result is 0 when the image cannot be locked. A
       table without Unlock counts as one without Lock. [render] */
    int32_t (*Lock)(EPIImageRef image, int32_t writable);
    void (*Unlock)(EPIImageRef image); /* [render] */
    void* reserved4;
    int32_t (*Width)(EPIImageRef image);  /* pixels [render] */
    int32_t (*Height)(EPIImageRef image); /* rows [render] */
    int32_t (*Depth)(EPIImageRef image);  /* bits in a pixel: 24, 32 or 64 [render] */
    void* reserved8[5];
    /* The pixel at the cursor as 8-bit channels: red in bits 0-7, green in 8-15, blue in 16-23; the
       alpha, or 0 without one, in 24-31. [render] */
    uint32_t (*GetPixel)(EPIImageRef image);
    /* The pixel at the cursor in a form of the host's own, to hand to SetRawPixel of an image of
       the same depth. [render] */
    uint32_t (*GetRawPixel)(EPIImageRef image);
    void* reserved15[3];
    void (*SetPixel)(EPIImageRef image, uint32_t packed);    /* layout of GetPixel [render] */
    void (*SetRawPixel)(EPIImageRef image, uint32_t raw);    /* [render] */
    void (*MoveTo)(EPIImageRef image, int32_t x, int32_t y); /* puts the cursor there [render] */
    void (*Next)(
        EPIImageRef image); /* cursor one pixel on, from a row's end to the next [render] */
    void* reserved22[9];
    /* Copies w x h pixels from (sx, sy) of src to (dx, dy) of dst; both have one depth. [render] */
    void (*Copy)(EPIImageRef dst, int32_t dx, int32_t dy, int32_t w, int32_t h, EPIImageRef src,
                 int32_t sx, int32_t sy);
    void* reserved32[4];
    /* Bytes from one row to the next; at least width * depth / 8. Valid while locked. [render] */
    int32_t (*RowBytes)(EPIImageRef image);
    void* reserved37[3];
    /* Address of pixel (0, 0); null when there are no pixels. Valid while locked. [render] */
    void* (*BaseAddress)(EPIImageRef image);
    void* reserved41[3];
    /* Where each channel lies in a pixel, counted in channels: byte number at 8 bits, 16-bit word
       number at 16. alpha is left alone when there is none. [render] */
    void (*ChannelIndices)(EPIImageRef image, int32_t* alpha, int32_t* red, int32_t* green,
                           int32_t* blue);
    /* Scales the stretch of src onto the stretch of dst; both have one depth. [render] */
    void (*Stretch)(EPIImageRef dst, int32_t dx, int32_t dy, int32_t dw, int32_t dh,
                    EPIImageRef src, int32_t sx, int32_t sy, int32_t sw, int32_t sh);
} EPIOffscreenProcs;

/* What an archive is opened for. */
enum { epiArchiveRead = 1, epiArchiveWrite = 2 };

/* Archives: a stretch of a document, or a file. Read, Write and IsLoading are required. */
typedef struct EPIArchiveProcs {
    uint32_t nSize; /* bytes in this table */
    /* Reads up to length bytes at the archive's position; the result is the number read. [ui] */
    int32_t (*Read)(EPIArchiveRef archive, void* buffer, int32_t length);
    void* reserved2[8];
    /* Writes length bytes; the result is the number written. The host may change buffer. [ui] */
    int32_t (*Write)(EPIArchiveRef archive, void* buffer, int32_t length);
    void* reserved11[8];
    int32_t (*Flush)(EPIArchiveRef archive); /* after the last write of a file; 0 is success [ui] */
    void* reserved20[2];
    int32_t (*Length)(EPIArchiveRef archive);    /* bytes in the whole archive [ui] */
    int32_t (*IsLoading)(EPIArchiveRef archive); /* non-zero: it is being read [ui] */
    void* reserved24[6];
    /* Opens a file in an archive that the object table made; fileType is a four-character code,
       mode one of epiArchive...; non-zero is success. [ui] */
    int32_t (*Open)(EPIArchiveRef archive, const FSSpec* file, uint32_t fileType, int32_t mode);
    /* Follows each Open, one that failed too. What was written and not flushed is dropped. [ui] */
    void (*Close)(EPIArchiveRef archive);
} EPIArchiveProcs;

/* Relocatable memory. Lock and Unlock are required. */
typedef struct EPIHandleProcs {
    uint32_t nSize; /* bytes in this table */
    void* reserved1[3];
    /* Pins the memory and gives its address, good until Unlock; null when it cannot. Locks count,
       as the records of several threads may share a handle. [render] */
    void* (*Lock)(EPIHandleRef handle);
    void (*Unlock)(EPIHandleRef handle); /* after the last one the memory may move [render] */
    void* reserved6;
    void (*Dispose)(EPIHandleRef handle); /* frees an unlocked handle of the effect's own [ui] */
} EPIHandleProcs;

/* Parameter notifications from an open dialog. */
typedef struct EPIParamProcs {
    uint32_t nSize;                                        /* bytes in this table */
    int32_t (*ParametersChanged)(EPIHandleRef fixedParam); /* the memory was edited [ui] */
    /* A text edit dialog was confirmed with its option on; value is 1, zero is 0. [ui] */
    int32_t (*Option)(double value, int32_t zero);
} EPIParamProcs;

/* Services of the host application. */
typedef struct EPIHostProcs {
    uint32_t nSize; /* bytes in this table */
    /* A text edit dialog has opened: called with 1 and, when that gives 0, again with 0. [ui] */
    int32_t (*Call)(int32_t flag);
} EPIHostProcs;

/* Window notifications. */
typedef struct EPIWindowProcs {
    uint32_t nSize;                             /* bytes in this table */
    int32_t (*ModalOpens)(EPIWindowRef window); /* a modal window is about to run [ui] */
    int32_t (*ModalEnds)(EPIWindowRef window);  /* it has ended [ui] */
} EPIWindowProcs;

/* ----------------------------------------------------------------------------- answer blocks */

/* Written by epiInit. */
typedef struct EPIPluginInfo {
    uint8_t reserved0[8];    /* left as it is */
    uint32_t nSignature;     /* 'TEXT' */
    int32_t nInfo1;          /* 2 */
    int32_t nInfo2;          /* 1 */
    char szCategory[64];     /* menu category, in the application's text encoding */
    char szName[64];         /* the effect's name */
    int32_t nFixedParamSize; /* bytes of hFixedParam: 480 */
    int32_t nSettingsSize;   /* bytes of pSettings: 5140 */
} EPIPluginInfo;
EPI_STATIC_ASSERT(sizeof(EPIPluginInfo) == 156, "the information block has 156 bytes");
EPI_STATIC_ASSERT(offsetof(EPIPluginInfo, szName) == 84, "the name lies at 84");

#pragma pack(push, 1)

/* Written by epiParamInfo for an index that it knows; any other index leaves the block alone. */
typedef struct EPIParamDesc {
    uint8_t reserved0[4]; /* left as it is */
    int32_t nKind;        /* 4: a number that the host animates */
    char szName[64];      /* in the application's text encoding */
    double dMinimum;
    double dMaximum;
    double dDefault;
} EPIParamDesc;
EPI_STATIC_ASSERT(sizeof(EPIParamDesc) == 96, "the description block has 96 bytes");
EPI_STATIC_ASSERT(offsetof(EPIParamDesc, dMinimum) == 72, "the bounds start at 72");

/* --------------------------------------------------------------------------------- the record */

typedef struct _EPIRECORD {
    uint8_t reserved0[16];
    /* Callback tables. Owned by the host, valid as long as the effect is loaded. [in] */
    const EPIObjectProcs* pObjectProcs;
    const EPIOffscreenProcs* pOffscreenProcs;
    uint8_t reserved1[4];
    const EPIArchiveProcs* pArchiveProcs;
    const EPIHandleProcs* pHandleProcs;
    const EPIParamProcs* pParamProcs;   /* null: no notifications wanted */
    const EPIHostProcs* pHostProcs;     /* null: no calls wanted */
    const EPIWindowProcs* pWindowProcs; /* null: no notifications wanted */
    EPIPluginInfo* pPluginInfo;         /* memory of the host for the answer to epiInit [in] */
    EPIParamDesc* pParamDesc;           /* memory of the host for the answer to epiParamInfo [in] */
    int32_t nParamIndex;                /* which parameter epiParamInfo describes, from 0 [in] */
    EPIHandleRef hFixedParam;           /* the memory of the _TEXTPARAM [in] */
    /* Values of the animated parameters at this frame. Element 0 is the apply switch: the text is
       drawn when its integer part is not 0. [in] */
    const double* pParamValues;
    uint8_t reserved2[4];
    EPIImageRef hDestination; /* the frame that epiDoFilter draws into [in] */
    uint8_t reserved3[28];
    /* Destination pixels for each frame pixel. Not above 0: no scaling, and ptOrigin is ignored.
       [in] */
    double dScale;
    tagPOINT ptOrigin; /* destination's top left in scaled pixels, subtracted after scaling [in] */
    EPIArchiveRef hArchive; /* what epiSerialize reads or writes [in] */
    uint8_t reserved4[8];
    EPIWindowRef hDialogWindow; /* window of the open dialog; null: none could be made [out] */
    void* pDialogHolder;        /* the effect's record of its open dialog; null when none [out] */
    uint32_t dwDialogFlags;     /* EPI_DIALOG_... [in] */
    int32_t nNotifyCode;        /* epiNotify... [in] */
    int32_t nNotifyResult;      /* what the text edit dialog made of OK [out] */
    int32_t nFrameWidth;        /* pixels at scale 1 [in] */
    int32_t nFrameHeight;       /* [in] */
    EPIImageRef hComposite;     /* the composited frame under the effect, for previews [in] */
    void* pSettings;            /* the _TEXT_DIALOG_PARAM, memory of the host [in] */
    int32_t* pPreviewSwitch;    /* preview on or off, and previews set it; null: on [in] */
    uint8_t reserved5[12];
    /* Non-zero: the four strings below are valid. Only dialogs ask; epiDoFilter does not. [in] */
    int32_t bInfoPresent;
    /* The score line's parts in the application's text encoding, each ended by a NUL. [in] */
    char szInfo1[64]; /* used as it is */
    char szInfo2[64]; /* a leading number is printed with three digits */
    char szInfo3[64]; /* three digits: the cut */
    char szInfo4[64]; /* four digits */
    uint8_t reserved6[16];
} _EPIRECORD;

#pragma pack(pop)

#define EPI_ASSERT_OFFSET(field, offset32, offset64)                                               \
    EPI_STATIC_ASSERT(offsetof(_EPIRECORD, field) ==                                               \
                          (sizeof(void*) == 4 ? (size_t)(offset32) : (size_t)(offset64)),          \
                      #field " lies elsewhere")
/* NOLINTNEXTLINE(bugprone-branch-clone): this one lies at the same place in both layouts. */
EPI_ASSERT_OFFSET(pObjectProcs, 16, 16);
EPI_ASSERT_OFFSET(pOffscreenProcs, 20, 24);
EPI_ASSERT_OFFSET(pArchiveProcs, 28, 36);
EPI_ASSERT_OFFSET(pHandleProcs, 32, 44);
EPI_ASSERT_OFFSET(pParamProcs, 36, 52);
EPI_ASSERT_OFFSET(pHostProcs, 40, 60);
EPI_ASSERT_OFFSET(pWindowProcs, 44, 68);
EPI_ASSERT_OFFSET(pPluginInfo, 48, 76);
EPI_ASSERT_OFFSET(pParamDesc, 52, 84);
EPI_ASSERT_OFFSET(nParamIndex, 56, 92);
EPI_ASSERT_OFFSET(hFixedParam, 60, 96);
EPI_ASSERT_OFFSET(pParamValues, 64, 104);
EPI_ASSERT_OFFSET(hDestination, 72, 116);
EPI_ASSERT_OFFSET(dScale, 104, 152);
EPI_ASSERT_OFFSET(ptOrigin, 112, 160);
EPI_ASSERT_OFFSET(hArchive, 120, 168);
EPI_ASSERT_OFFSET(hDialogWindow, 132, 184);
EPI_ASSERT_OFFSET(pDialogHolder, 136, 192);
EPI_ASSERT_OFFSET(dwDialogFlags, 140, 200);
EPI_ASSERT_OFFSET(nNotifyCode, 144, 204);
EPI_ASSERT_OFFSET(nNotifyResult, 148, 208);
EPI_ASSERT_OFFSET(nFrameWidth, 152, 212);
EPI_ASSERT_OFFSET(nFrameHeight, 156, 216);
EPI_ASSERT_OFFSET(hComposite, 160, 220);
EPI_ASSERT_OFFSET(pSettings, 164, 228);
EPI_ASSERT_OFFSET(pPreviewSwitch, 168, 236);
EPI_ASSERT_OFFSET(bInfoPresent, 184, 256);
EPI_ASSERT_OFFSET(szInfo1, 188, 260);
EPI_ASSERT_OFFSET(szInfo2, 252, 324);
EPI_ASSERT_OFFSET(szInfo3, 316, 388);
EPI_ASSERT_OFFSET(szInfo4, 380, 452);
EPI_STATIC_ASSERT(sizeof(_EPIRECORD) == (sizeof(void*) == 4 ? 460 : 532), "the record's size");

#define EPI_ASSERT_SLOT(table, entry, slot)                                                        \
    EPI_STATIC_ASSERT(offsetof(table, entry) == (slot) * sizeof(void*), #entry " lies elsewhere")
EPI_ASSERT_SLOT(EPIObjectProcs, Release, 2);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Allocate, 1);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Lock, 2);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Width, 5);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Depth, 7);
EPI_ASSERT_SLOT(EPIOffscreenProcs, GetPixel, 13);
EPI_ASSERT_SLOT(EPIOffscreenProcs, GetRawPixel, 14);
EPI_ASSERT_SLOT(EPIOffscreenProcs, SetPixel, 18);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Next, 21);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Copy, 31);
EPI_ASSERT_SLOT(EPIOffscreenProcs, RowBytes, 36);
EPI_ASSERT_SLOT(EPIOffscreenProcs, BaseAddress, 40);
EPI_ASSERT_SLOT(EPIOffscreenProcs, ChannelIndices, 44);
EPI_ASSERT_SLOT(EPIOffscreenProcs, Stretch, 45);
EPI_ASSERT_SLOT(EPIArchiveProcs, Read, 1);
EPI_ASSERT_SLOT(EPIArchiveProcs, Write, 10);
EPI_ASSERT_SLOT(EPIArchiveProcs, Flush, 19);
EPI_ASSERT_SLOT(EPIArchiveProcs, Length, 22);
EPI_ASSERT_SLOT(EPIArchiveProcs, IsLoading, 23);
EPI_ASSERT_SLOT(EPIArchiveProcs, Open, 30);
EPI_ASSERT_SLOT(EPIArchiveProcs, Close, 31);
EPI_ASSERT_SLOT(EPIHandleProcs, Lock, 4);
EPI_ASSERT_SLOT(EPIHandleProcs, Unlock, 5);
EPI_ASSERT_SLOT(EPIHandleProcs, Dispose, 7);
EPI_ASSERT_SLOT(EPIParamProcs, Option, 2);
EPI_ASSERT_SLOT(EPIHostProcs, Call, 1);
EPI_ASSERT_SLOT(EPIWindowProcs, ModalEnds, 2);

/* An image table of at least this size has ChannelIndices and Stretch. */
#define EPI_OFFSCREEN_FULL_SIZE ((uint32_t)(46 * sizeof(void*)))

/* dwDialogFlags. Either keeps the user from changing the option of the text edit dialog. */
#define EPI_DIALOG_TEXT_EDIT 0x1u /* open that dialog, option on, instead of the settings panel */
#define EPI_DIALOG_NO_OPTION 0x2u /* the option counts as off */

/* nNotifyCode */
enum { epiNotifyOK = 1, epiNotifyUpdate = 2, epiNotifyCompositeImage = 3 };

/* -------------------------------------------------------------- parameters of the text overlay */

/* dwFlags of a _TEXTPARAM. Of the first four the first set one in the order score, info, character,
   dialogue is drawn. */
#define TEXT_INFO 0x00000001u
#define TEXT_CHARACTER 0x00000002u
#define TEXT_DIALOGUE 0x00000004u
#define TEXT_SCORE 0x00000008u
#define TEXT_BOX 0x00010000u          /* on a box of crBack; else blended with nOpacity */
#define TEXT_OFFCHARACTER 0x00020000u /* the off-screen suffix follows the character's name */
#define TEXT_MONOLOGUE 0x00040000u    /* the monologue suffix does; OFFCHARACTER goes first */

/*
 * One text. The contents of hFixedParam in the machine's byte order, and of a settings archive with
 * every integer big-endian. Strings are in the application's text encoding and end with a NUL.
 */
typedef struct _TEXTPARAM {
    tagPOINT ptPos;      /* top left of the text box, in frame pixels at scale 1 */
    char szFontName[64]; /* font family */
    int32_t nFontSize;   /* points, which are pixels at scale 1; the low 16 bits count */
    COLORREF crText;
    COLORREF crBack;      /* the box's colour */
    int32_t nOpacity;     /* per cent, 0 to 100 */
    int32_t nScoreFormat; /* 0 C-3-4, 1 3-4, 2 2-3-4, 3 1-2-3-4 of the information strings */
    char szInfoText[64];  /* one line */
    char szCharacter[64]; /* one line */
    char szDialogue[256]; /* lines end with CR or CR LF */
    uint32_t dwFlags;     /* TEXT_... */
} _TEXTPARAM;
EPI_STATIC_ASSERT(sizeof(_TEXTPARAM) == 480, "the parameters have 480 bytes");
EPI_STATIC_ASSERT(offsetof(_TEXTPARAM, nFontSize) == 72, "the font size lies at 72");
EPI_STATIC_ASSERT(offsetof(_TEXTPARAM, szInfoText) == 92, "the texts start at 92");
EPI_STATIC_ASSERT(offsetof(_TEXTPARAM, dwFlags) == 476, "the flags lie at 476");

/* Strings to choose from. Each list ends at its first empty entry. */
typedef struct _POPUPSTRING {
    char szPreset[20][64];  /* kept by the user */
    char szHistory[20][64]; /* added by use, oldest first */
    int32_t bLock;          /* non-zero: use adds nothing */
} _POPUPSTRING;
EPI_STATIC_ASSERT(sizeof(_POPUPSTRING) == 2564, "a pair of lists has 2564 bytes");

/* What the dialogs remember. The contents of pSettings; the host keeps it. */
typedef struct _TEXT_DIALOG_PARAM {
    _POPUPSTRING infoPopup;
    _POPUPSTRING characterPopup;
    int32_t bDialogOption;
    int32_t nViewState1;
    int32_t nViewState2;
} _TEXT_DIALOG_PARAM;
EPI_STATIC_ASSERT(sizeof(_TEXT_DIALOG_PARAM) == 5140, "the dialog settings have 5140 bytes");

/* ---------------------------------------------------------------------------------- the entry */

enum {
    epiInit = 0,
    epiTerm = 1,
    epiInitFixedParam = 2,
    epiInitSettings = 3,
    epiParamInfo = 4,
    epiCreateSettingDialog = 5,
    epiDialogNotify = 6,
    epiDestroySettingDialog = 7,
    epiDoFilter = 8,
    epiSerialize = 9,
    epiCalcRenderBound = 10
};

/* What EntryPoint gives for a selector that it does not know. */
#define EPI_UNKNOWN_SELECTOR 0x6001138EL

/*
 * The one function of a module. The result is 0 for success and EPI_UNKNOWN_SELECTOR for a selector
 * outside 0 to 10, which touches nothing. An exception that a callback of the host throws passes
 * through, with everything unlocked and released on its way. [render] for epiDoFilter, else [ui]
 */
typedef long (*EPIEntryPoint)(long selector, _EPIRECORD* record);

#ifdef __cplusplus
}
#endif

#endif
