// SPDX-License-Identifier: BSD-3-Clause
#include "support/CountingHost.h"

#include <algorithm>
#include <cstring>

#include "effect/EntryPoint.h"

// Every reference that the host gives out is its own address. The tables have no entries beside
// those that drawing, archives and handles need, so a call to another one shows.
struct CountingHost::Callbacks {
    static CountingHost& Host(void* reference) { return *static_cast<CountingHost*>(reference); }

    static void* LockHandle(EPIHandleRef handle) {
        CountingHost& host = Host(handle);
        if (host.InTrouble())
            return nullptr;
        ++host.m_handleLocks;
        return host.m_memory.data();
    }
    static void UnlockHandle(EPIHandleRef handle) {
        CountingHost& host = Host(handle);
        if (--host.m_handleLocks == 0)
            host.m_memory = std::vector<std::uint8_t>(host.m_memory); // elsewhere
        host.InTrouble();
    }

    static std::int32_t LockImage(EPIImageRef image, std::int32_t writable) {
        CountingHost& host = Host(image);
        if (host.InTrouble())
            return 0;
        if (writable != 1)
            host.NoteMisuse("a frame locked for reading");
        ++host.m_imageLocks;
        return 1;
    }
    static void UnlockImage(EPIImageRef image) {
        CountingHost& host = Host(image);
        --host.m_imageLocks;
        host.InTrouble();
    }
    static std::int32_t Width(EPIImageRef image) {
        return Host(image).InTrouble() ? 0 : Host(image).m_width;
    }
    static std::int32_t Height(EPIImageRef image) {
        return Host(image).InTrouble() ? 0 : Host(image).m_height;
    }
    static std::int32_t Depth(EPIImageRef image) {
        return Host(image).InTrouble() ? 0 : Host(image).m_depth;
    }
    static std::int32_t RowBytes(EPIImageRef image) {
        CountingHost& host = Host(image);
        if (host.m_imageLocks == 0)
            host.NoteMisuse("row bytes of an unlocked image");
        return host.InTrouble() ? 0 : host.RowBytes();
    }
    static void* BaseAddress(EPIImageRef image) {
        CountingHost& host = Host(image);
        if (host.m_imageLocks == 0)
            host.NoteMisuse("base address of an unlocked image");
        return host.InTrouble() ? nullptr : host.pixels.data();
    }
    static void ChannelIndices(EPIImageRef image, std::int32_t* alpha, std::int32_t* red,
                               std::int32_t* green, std::int32_t* blue) {
        CountingHost& host = Host(image);
        if (host.InTrouble())
            return;
        const bool hasAlpha = host.m_depth != 24;
        if (hasAlpha)
            *alpha = 0;
        *red = hasAlpha ? 1 : 0;
        *green = *red + 1;
        *blue = *red + 2;
    }

    static std::int32_t Read(EPIArchiveRef archive, void* buffer, std::int32_t length) {
        CountingHost& host = Host(archive);
        if (host.InTrouble())
            return 0;
        const auto size =
            std::min<std::size_t>(static_cast<std::size_t>(length), host.archive.size());
        std::copy_n(host.archive.begin(), size, static_cast<std::uint8_t*>(buffer));
        return static_cast<std::int32_t>(size);
    }
    static std::int32_t Write(EPIArchiveRef archive, void* buffer, std::int32_t length) {
        CountingHost& host = Host(archive);
        if (host.InTrouble())
            return 0;
        auto* bytes = static_cast<std::uint8_t*>(buffer);
        host.archive.insert(host.archive.end(), bytes, bytes + length);
        if (host.scribbles)
            std::fill_n(bytes, length, std::uint8_t { 0xEE });
        return length;
    }
    static std::int32_t IsLoading(EPIArchiveRef archive) {
        CountingHost& host = Host(archive);
        host.InTrouble();
        return host.loading ? 1 : 0;
    }

    static const EPIOffscreenProcs* OffscreenTable() {
        static const EPIOffscreenProcs table = [] {
            EPIOffscreenProcs procs {};
            procs.nSize = sizeof procs;
            procs.Lock = LockImage;
            procs.Unlock = UnlockImage;
            procs.Width = Width;
            procs.Height = Height;
            procs.Depth = Depth;
            procs.RowBytes = RowBytes;
            procs.BaseAddress = BaseAddress;
            procs.ChannelIndices = ChannelIndices;
            return procs;
        }();
        return &table;
    }
    static const EPIHandleProcs* HandleTable() {
        static const EPIHandleProcs table = [] {
            EPIHandleProcs procs {};
            procs.nSize = sizeof procs;
            procs.Lock = LockHandle;
            procs.Unlock = UnlockHandle;
            return procs;
        }();
        return &table;
    }
    static const EPIArchiveProcs* ArchiveTable() {
        static const EPIArchiveProcs table = [] {
            EPIArchiveProcs procs {};
            procs.nSize = sizeof procs;
            procs.Read = Read;
            procs.Write = Write;
            procs.IsLoading = IsLoading;
            return procs;
        }();
        return &table;
    }
    static const EPIObjectProcs* ObjectTable() {
        static const EPIObjectProcs table { sizeof table, nullptr, nullptr };
        return &table;
    }
};

CountingHost::CountingHost(int width, int height, int depth)
    : record(), pluginInfo(), paramDesc(), settings(), m_width(width), m_height(height),
      m_depth(depth), m_memory(sizeof(_TEXTPARAM)) {
    pixels.assign(static_cast<std::size_t>(RowBytes()) * static_cast<std::size_t>(height), kFill);
    record.pObjectProcs = Callbacks::ObjectTable();
    record.pOffscreenProcs = Callbacks::OffscreenTable();
    record.pArchiveProcs = Callbacks::ArchiveTable();
    record.pHandleProcs = Callbacks::HandleTable();
    record.pPluginInfo = &pluginInfo;
    record.pParamDesc = &paramDesc;
    record.hFixedParam = reinterpret_cast<EPIHandleRef>(this);
    record.pParamValues = &apply;
    record.hDestination = reinterpret_cast<EPIImageRef>(this);
    record.hArchive = reinterpret_cast<EPIArchiveRef>(this);
    record.dScale = 1.0;
    record.nFrameWidth = width;
    record.nFrameHeight = height;
    record.pSettings = &settings;
}

long CountingHost::Call(long selector) {
    return EntryPoint(selector, &record);
}

void CountingHost::MakeTrouble(int index, Trouble trouble) {
    m_callbacks = 0;
    m_troubleAt = index;
    m_trouble = trouble;
}

bool CountingHost::InTrouble() {
    if (m_callbacks++ != m_troubleAt)
        return false;
    if (m_trouble == Trouble::kThrow)
        throw HostFailure();
    return m_trouble == Trouble::kFail;
}

bool CountingHost::PaddingIsUntouched() const {
    const auto isFill = [](std::uint8_t byte) { return byte == kFill; };
    for (int y = 0; y < m_height; ++y) {
        const auto rowEnd = pixels.begin() + static_cast<std::ptrdiff_t>(y + 1) * RowBytes();
        if (!std::all_of(rowEnd - kRowPadding, rowEnd, isFill))
            return false;
    }
    return true;
}
