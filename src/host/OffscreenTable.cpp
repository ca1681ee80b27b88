// SPDX-License-Identifier: BSD-3-Clause
// The image table, with its two late entries and without them.
#include <cstddef>

#include "host/Image.h"
#include "host/Ledger.h"
#include "host/Tables.h"

namespace host {

namespace {

// What is asked of the image behind a reference; nothing is the answer of none.
template <class Ask>
auto AskImage(EPIImageRef ref, const char* call, const Ask& ask) {
    auto* image = Image::FromRef(ref, call);
    using Answer = decltype(ask(*image));
    return image ? ask(*image) : Answer();
}

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

    static void Copy(EPIImageRef dst, std::int32_t dx, std::int32_t dy, std::int32_t w,
                     std::int32_t h, EPIImageRef src, std::int32_t sx, std::int32_t sy) {
        auto* to = Image::FromRef(dst, "copy");
        const auto* from = Image::FromRef(src, "copy");
        if (to && from && IsWritable(*to, "copy"))
            CopyPixels(*to, dx, dy, *from, { sx, sy, w, h });
    }

    static std::int32_t RowBytes(EPIImageRef ref) {
        const auto* image = Locked(ref, "row bytes");
        return image ? image->RowBytes() : 0;
    }

    static void* BaseAddress(EPIImageRef ref) {
        auto* image = Locked(ref, "base address");
        return image ? image->Bytes().data() : nullptr;
    }

    static void ChannelIndices(EPIImageRef ref, std::int32_t* alpha, std::int32_t* red,
                               std::int32_t* green, std::int32_t* blue) {
        const auto* image = Image::FromRef(ref, "channel indices");
        if (!image)
            return;
        const auto& format = image->Format();
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
        const auto* from = Image::FromRef(src, "stretch");
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
    procs.Unlock = [](EPIImageRef ref) {
        return AskImage(ref, "unlock of an image", [](Image& image) { return image.Unlock(); });
    };
    procs.Width = [](EPIImageRef ref) {
        return AskImage(ref, "width", [](Image& image) { return image.Width(); });
    };
    procs.Height = [](EPIImageRef ref) {
        return AskImage(ref, "height", [](Image& image) { return image.Height(); });
    };
    procs.Depth = [](EPIImageRef ref) {
        return AskImage(ref, "depth", [](Image& image) { return image.Format().depth; });
    };
    procs.GetPixel = [](EPIImageRef ref) {
        return AskImage(ref, "get pixel", [](Image& image) { return image.GetPixel(); });
    };
    procs.GetRawPixel = [](EPIImageRef ref) {
        return AskImage(ref, "get raw pixel", [](Image& image) { return image.GetRawPixel(); });
    };
    procs.SetPixel = [](EPIImageRef ref, std::uint32_t packed) {
        AskImage(ref, "set pixel", [packed](Image& image) { image.SetPixel(packed); });
    };
    procs.SetRawPixel = [](EPIImageRef ref, std::uint32_t raw) {
        AskImage(ref, "set raw pixel", [raw](Image& image) { image.SetRawPixel(raw); });
    };
    procs.MoveTo = [](EPIImageRef ref, std::int32_t x, std::int32_t y) {
        AskImage(ref, "move to", [x, y](Image& image) { image.MoveTo(x, y); });
    };
    procs.Next = [](EPIImageRef ref) {
        return AskImage(ref, "next", [](Image& image) { return image.Next(); });
    };
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
