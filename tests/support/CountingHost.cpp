// SPDX-License-Identifier: BSD-3-Clause
#include "support/CountingHost.h"

#include <algorithm>

#include "effect/EntryPoint.h"

namespace {

// The one that the thread works with: a call that makes an object names no host.
thread_local CountingHost* t_latest = nullptr;

// Every reference that the host gives out is its own address.
CountingHost& Host(void* reference) {
    return *static_cast<CountingHost*>(reference);
}

} // namespace

// The tables have no entries beside those that archives, files and handles need, so a call to another one
// shows.
void CountingHost::FillHandles() {
    m_handles.nSize = sizeof m_handles;
    m_handles.Lock = [](EPIHandleRef handle) -> void* {
        if (Host(handle).InTrouble())
            return nullptr;
        ++Host(handle).m_handleLocks;
        return Host(handle).m_memory.data();
    };
    m_handles.Unlock = [](EPIHandleRef handle) {
        CountingHost& host = Host(handle);
        if (--host.m_handleLocks == 0)
            host.m_memory = std::vector<std::uint8_t>(host.m_memory); // elsewhere
        host.InTrouble();
    };
}

void CountingHost::FillArchives() {
    m_archives.nSize = sizeof m_archives;
    m_archives.Read = [](EPIArchiveRef archive, void* buffer, std::int32_t length) -> std::int32_t {
        const auto& bytes = Host(archive).archive;
        const auto whole = std::min(static_cast<std::size_t>(length), bytes.size());
        // A read that fails has filled a part of the buffer already.
        const std::size_t size = Host(archive).InTrouble() ? whole / 2 : whole;
        std::copy_n(bytes.begin(), size, static_cast<std::uint8_t*>(buffer));
        return static_cast<std::int32_t>(size);
    };
    m_archives.Write = [](EPIArchiveRef archive, void* buffer,
                          std::int32_t length) -> std::int32_t {
        if (Host(archive).InTrouble())
            return 0;
        auto* bytes = static_cast<std::uint8_t*>(buffer);
        Host(archive).archive.insert(Host(archive).archive.end(), bytes, bytes + length);
        if (Host(archive).scribbles)
            std::fill_n(bytes, length, std::uint8_t { 0xEE });
        return length;
    };
    m_archives.IsLoading = [](EPIArchiveRef archive) -> std::int32_t {
        Host(archive).InTrouble();
        return Host(archive).loading ? 1 : 0;
    };
}

void CountingHost::FillFiles() {
    m_objects.Create = [](std::int32_t kind) -> EPIObjectRef {
        if (kind != epiObjectArchive || t_latest->InTrouble())
            return nullptr;
        ++t_latest->m_objectsLent;
        return t_latest;
    };
    m_objects.Release = [](EPIObjectRef object, std::int32_t kind) {
        Host(object).m_objectsLent -= kind == epiObjectArchive ? 1 : 0;
        Host(object).InTrouble();
    };
    m_archives.Open = [](EPIArchiveRef archive, const FSSpec* spec, std::uint32_t type,
                         std::int32_t mode) -> std::int32_t {
        CountingHost& host = Host(archive);
        if (host.InTrouble() || spec != &host.path || type != EPI_FOUR_CC('T', 'E', 'X', 'T'))
            return 0;
        host.m_isOpen = true;
        host.archive.clear();
        if (mode == epiArchiveRead)
            host.archive.assign(host.file.begin(), host.file.end());
        return 1;
    };
    m_archives.Length = [](EPIArchiveRef archive) -> std::int32_t {
        const auto size = static_cast<std::int32_t>(Host(archive).archive.size());
        return Host(archive).InTrouble() ? -1 : Host(archive).claimedLength.value_or(size);
    };
    m_archives.Flush = [](EPIArchiveRef archive) -> std::int32_t {
        if (Host(archive).InTrouble())
            return -1;
        Host(archive).file.assign(Host(archive).archive.begin(), Host(archive).archive.end());
        return 0;
    };
    m_archives.Close = [](EPIArchiveRef archive) {
        Host(archive).m_isOpen = false;
        Host(archive).InTrouble();
    };
}

CountingHost::CountingHost(int width, int height, int depth)
    : record(), pluginInfo(), paramDesc(), settings(), image(width, height, depth, 12),
      m_memory(sizeof(_TEXTPARAM)) {
    image.isInTrouble = [this] { return InTrouble(); };
    FillHandles();
    FillArchives();
    FillFiles();
    t_latest = this;
    record.pObjectProcs = &m_objects;
    record.pOffscreenProcs = image.Procs();
    record.pArchiveProcs = &m_archives;
    record.pHandleProcs = &m_handles;
    record.pPluginInfo = &pluginInfo;
    record.pParamDesc = &paramDesc;
    record.hFixedParam = reinterpret_cast<EPIHandleRef>(this);
    record.pParamValues = &apply;
    record.hDestination = image.Ref();
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
