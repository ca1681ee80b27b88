// SPDX-License-Identifier: BSD-3-Clause
#include "support/CountingHost.h"

#include <algorithm>

#include "effect/EntryPoint.h"

namespace {

// Every reference that the host gives out is its own address.
CountingHost& Host(void* reference) {
    return *static_cast<CountingHost*>(reference);
}

} // namespace

// The tables have no entries beside those that archives and handles need, so a call to another one
// shows.
void CountingHost::FillHandlesAndArchives() {
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
    m_archives.nSize = sizeof m_archives;
    m_archives.Read = [](EPIArchiveRef archive, void* buffer, std::int32_t length) -> std::int32_t {
        const auto& bytes = Host(archive).archive;
        if (Host(archive).InTrouble())
            return 0;
        const auto size = std::min(static_cast<std::size_t>(length), bytes.size());
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

CountingHost::CountingHost(int width, int height, int depth)
    : record(), pluginInfo(), paramDesc(), settings(), image(width, height, depth, 12),
      m_memory(sizeof(_TEXTPARAM)) {
    image.isInTrouble = [this] { return InTrouble(); };
    FillHandlesAndArchives();
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
