// SPDX-License-Identifier: BSD-3-Clause
#include "FileHost.h"

#include <algorithm>
#include <cstring>

// The host is its own one archive.
struct FileHost::Callbacks {
    static FileHost* s_host;

    static FileHost& Host(EPIArchiveRef archive) { return *reinterpret_cast<FileHost*>(archive); }

    static EPIObjectRef Create(std::int32_t kind) {
        return s_host->InTrouble("create" + std::to_string(kind)) ? nullptr : s_host;
    }
    static void Release(EPIObjectRef object, std::int32_t kind) {
        static_cast<FileHost*>(object)->InTrouble("release" + std::to_string(kind));
    }
    static std::int32_t Open(EPIArchiveRef archive, const FSSpec* file, std::uint32_t type,
                             std::int32_t mode) {
        auto& host = Host(archive);
        const bool known =
            std::strcmp(file->path, host.path.path) == 0 && type == EPI_FOUR_CC('T', 'E', 'X', 'T');
        const bool there = mode == epiArchiveWrite || host.file;
        return !host.InTrouble("open" + std::to_string(mode)) && known && there ? 1 : 0;
    }
    static std::int32_t Length(EPIArchiveRef archive) {
        auto& host = Host(archive);
        if (host.InTrouble("length"))
            return -1;
        return host.claimedLength != -1 ? host.claimedLength
                                        : static_cast<std::int32_t>(host.file->size());
    }
    static std::int32_t Read(EPIArchiveRef archive, void* buffer, std::int32_t length) {
        auto& host = Host(archive);
        const std::size_t left = host.file->size() - host.m_position;
        const auto asked = std::min(left, static_cast<std::size_t>(length));
        // A read that fails has filled a part of the buffer already.
        const std::size_t count = host.InTrouble("read") ? asked / 2 : asked;
        std::memcpy(buffer, host.file->data() + host.m_position, count);
        host.m_position += count;
        return static_cast<std::int32_t>(count);
    }
    static std::int32_t Write(EPIArchiveRef archive, void* buffer, std::int32_t length) {
        auto& host = Host(archive);
        if (host.InTrouble("write"))
            return 0;
        host.m_written.append(static_cast<char*>(buffer), static_cast<std::size_t>(length));
        std::memset(buffer, '#', static_cast<std::size_t>(length));
        return length;
    }
    static std::int32_t Flush(EPIArchiveRef archive) {
        auto& host = Host(archive);
        if (host.InTrouble("flush"))
            return -1;
        host.file = host.m_written;
        return 0;
    }
    static void Close(EPIArchiveRef archive) { Host(archive).InTrouble("close"); }

    static const EPIObjectProcs* ObjectTable() {
        static const EPIObjectProcs table { sizeof table, Create, Release };
        return &table;
    }
    static const EPIArchiveProcs* ArchiveTable() {
        static const EPIArchiveProcs table = [] {
            EPIArchiveProcs procs {};
            procs.nSize = sizeof procs;
            procs.Read = Read;
            procs.Write = Write;
            procs.Flush = Flush;
            procs.Length = Length;
            procs.Open = Open;
            procs.Close = Close;
            return procs;
        }();
        return &table;
    }
};

FileHost* FileHost::Callbacks::s_host = nullptr;

FileHost::FileHost(std::optional<std::string> contents) : file(std::move(contents)) {
    Callbacks::s_host = this;
    record.pObjectProcs = Callbacks::ObjectTable();
    record.pArchiveProcs = Callbacks::ArchiveTable();
    std::strcpy(path.path, "/lists/directions.txt");
}

void FileHost::MakeTrouble(int index, Trouble trouble) {
    m_troubleAt = index;
    m_trouble = trouble;
}

bool FileHost::InTrouble(const std::string& call) {
    m_calls += call + " ";
    if (m_callbacks++ != m_troubleAt)
        return false;
    if (m_trouble == Trouble::kThrow)
        throw HostFailure();
    return m_trouble == Trouble::kFail;
}
