// SPDX-License-Identifier: BSD-3-Clause
// The image table, with its two late entries and without them.
#include <cstddef>

#include "host/Image.h"
#include "host/Ledger.h"
#include "host/Tables.h"

namespace host {

namespace {

struct ImageProcs {
    static std::int32_t Allocate(EPIImageRef ref, std::int32_t width, std::int32_t height,
                                 std::int32_t depth, double /*dotsPerInch*/) {
        auto* image = Image::FromRef(ref, "allocate");
        return image && image->Allocate(width, height, FormatOfDepth(depth)) ? 1 : 0;
    }

    static std::int32_t Lock(EPIImageRef ref, std::int32_t writable) {
        auto* image = Image::FromRef(ref, "lock of an image");
        return image && image->Lock(writable != 0) ? 1 : 0;
    }

    static void Unlock(EPIImageRef ref) {
        if (auto* image = Image::FromRef(ref, "unlock of an image"))
            image->Unlock();
    }

    static std::int32_t Width(EPIImageRef ref) {
        auto const* image = Image::FromRef(ref, "width");
        return image ? image->Width() : 0;
    }

    static std::int32_t Height(EPIImageRef ref) {
        auto const* image = Image::FromRef(ref, "height");
        return image ? image->Height() : 0;
    }

    static std::int32_t Depth(EPIImageRef ref) {
        auto const* image = Image::FromRef(ref, "depth");
        return image ? image->Format().depth : 0;
    }

    static std::uint32_t GetPixel(EPIImageRef ref) {
        auto const* image = Image::FromRef(ref, "get pixel");
        return image ? image->GetPixel() : 0;
    }

    static std::uint32_t GetRawPixel(EPIImageRef ref) {
        auto const* image = Image::FromRef(ref, "get raw pixel");
        return image ? image->GetRawPixel() : 0;
    }

    static void SetPixel(EPIImageRef ref, std::uint32_t packed) {
        if (auto* image = Image::FromRef(ref, "set pixel"))
            image->SetPixel(packed);
    }

    static void SetRawPixel(EPIImageRef ref, std::uint32_t raw) {
        if (auto* image = Image::FromRef(ref, "set raw pixel"))
            image->SetRawPixel(raw);
    }

    static void MoveTo(EPIImageRef ref, std::int32_t x, std::int32_t y) {
        if (auto* image = Image::FromRef(ref, "move to"))
            image->MoveTo(x, y);
    }

    static void Next(EPIImageRef ref) {
        if (auto* image = Image::FromRef(ref, "next"))
            image->Next();
    }

    static void Copy(EPIImageRef dst, std::int32_t dx, std::int32_t dy, std::int32_t w,
                     std::int32_t h, EPIImageRef src, std::int32_t sx, std::int32_t sy) {
        auto* to = Image::FromRef(dst, "copy");
        auto const* from = Image::FromRef(src, "copy");
        if (to && from && IsWritable(*to, "copy"))
            CopyPixels(*to, dx, dy, *from, { sx, sy, w, h });
    }

    static std::int32_t RowBytes(EPIImageRef ref) {
        auto const* image = Locked(ref, "row bytes");
        return image ? image->RowBytes() : 0;
    }

    static void* BaseAddress(EPIImageRef ref) {
        auto* image = Locked(ref, "base address");
        return image ? image->Bytes().data() : nullptr;
    }

    static void ChannelIndices(EPIImageRef ref, std::int32_t* alpha, std::int32_t* red,
                               std::int32_t* green, std::int32_t* blue) {
        auto const* image = Image::FromRef(ref, "channel indices");
        if (!image)
            return;
        auto const& format = image->Format();
        if (format.alpha >= 0)
            *alpha = format.alpha;
        *red = format.red;
        *green = format.green;
        *blue = format.blue;
    }

    static void Stretch(EPIImageRef dst, std::int32_t dx, std::int32_t dy, std::int32_t dw,
                        std::int32_t dh, EPIImageRef src, std::int32_t sx, std::int32_t sy,
                        std::int32_t sw, std::int32_t sh) {
        auto* to = Image::FromRef(dst, "stretch");
        auto const* from = Image::FromRef(src, "stretch");
        if (to && from && IsWritable(*to, "stretch"))
            StretchPixels(*to, { dx, dy, dw, dh }, *from, { sx, sy, sw, sh });
    }

private:
    // Of no depth that there is: a format that is not valid.
    static PixelFormat FormatOfDepth(std::int32_t depth) {
        if (depth == 24)
            return kRgb24;
        PixelFormat format = depth == 64 ? kArgb64 : kArgb32;
        format.depth = depth;
        return format;
    }

    // What is asked for means nothing unless the pixels are pinned.
    static Image* Locked(EPIImageRef ref, const char* call) {
        auto* image = Image::FromRef(ref, call);
        if (!image || image->Locks() > 0)
            return image;
        Ledger::Get().RecordMisuse(call, " of an image that is not locked");
        return nullptr;
    }

    static bool IsWritable(const Image& image, const char* call) {
        // A copy pins the pixels by itself, but pixels that others pinned for reading stay.
        if (image.Locks() == 0 || image.IsLockedForWriting())
            return true;
        Ledger::Get().RecordMisuse(call, " onto an image locked for reading only");
        return false;
    }
};

constexpr EPIOffscreenProcs MakeTable(LateEntries late) {
    EPIOffscreenProcs procs {};
    procs.nSize = offsetof(EPIOffscreenProcs, ChannelIndices);
    procs.Allocate = ImageProcs::Allocate;
    procs.Lock = ImageProcs::Lock;
    procs.Unlock = ImageProcs::Unlock;
    procs.Width = ImageProcs::Width;
    procs.Height = ImageProcs::Height;
    procs.Depth = ImageProcs::Depth;
    procs.GetPixel = ImageProcs::GetPixel;
    procs.GetRawPixel = ImageProcs::GetRawPixel;
    procs.SetPixel = ImageProcs::SetPixel;
    procs.SetRawPixel = ImageProcs::SetRawPixel;
    procs.MoveTo = ImageProcs::MoveTo;
    procs.Next = ImageProcs::Next;
    procs.Copy = ImageProcs::Copy;
    procs.RowBytes = ImageProcs::RowBytes;
    procs.BaseAddress = ImageProcs::BaseAddress;
    if (late == LateEntries::kPresent) {
        procs.nSize = EPI_OFFSCREEN_FULL_SIZE;
        procs.ChannelIndices = ImageProcs::ChannelIndices;
        procs.Stretch = ImageProcs::Stretch;
    }
    return procs;
}

constexpr EPIOffscreenProcs kFullTable = MakeTable(LateEntries::kPresent);
constexpr EPIOffscreenProcs kEarlyTable = MakeTable(LateEntries::kAbsent);

} // namespace

const EPIOffscreenProcs& OffscreenTable(LateEntries late) {
    return late == LateEntries::kPresent ? kFullTable : kEarlyTable;
}

} // namespace host
