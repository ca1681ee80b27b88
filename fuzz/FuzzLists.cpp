// SPDX-License-Identifier: BSD-3-Clause
// Files of reusable texts, in several encodings. The effect's loader and the command line's reader,
// which know nothing of each other, must take the same entries from a file, and what is saved must
// come back.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "apps/telop/ListsFile.h"
#include "platform/TextEncoding.h"
#include "popup/CTextPopup.h"

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// A host with one file in memory.
std::string g_file;
std::string g_written;

EPIObjectRef Create(std::int32_t /*kind*/) {
    return &g_file;
}
void Release(EPIObjectRef /*object*/, std::int32_t /*kind*/) {}
std::int32_t Open(EPIArchiveRef /*archive*/, const FSSpec* /*file*/, std::uint32_t /*type*/,
                  std::int32_t /*mode*/) {
    g_written.clear();
    return 1;
}
void Close(EPIArchiveRef /*archive*/) {}
std::int32_t Length(EPIArchiveRef /*archive*/) {
    return static_cast<std::int32_t>(g_file.size());
}
std::int32_t Read(EPIArchiveRef /*archive*/, void* buffer, std::int32_t length) {
    std::memcpy(buffer, g_file.data(), static_cast<std::size_t>(length));
    return length;
}
std::int32_t Write(EPIArchiveRef /*archive*/, void* buffer, std::int32_t length) {
    g_written.append(static_cast<const char*>(buffer), static_cast<std::size_t>(length));
    return length;
}
std::int32_t Flush(EPIArchiveRef /*archive*/) {
    g_file = g_written;
    return 0;
}

using List = std::array<char[64], 20>;

std::vector<std::string> EntriesOf(const List& list) {
    std::vector<std::string> entries;
    for (const auto& entry : list) {
        Require(entry[63] == '\0');
        if (entry[0] == '\0')
            break;
        entries.emplace_back(entry);
    }
    return entries;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const EPIObjectProcs objects { sizeof objects, Create, Release };
    static EPIArchiveProcs archives {};
    archives = {};
    archives.nSize = sizeof archives;
    archives.Read = Read;
    archives.Write = Write;
    archives.Flush = Flush;
    archives.Length = Length;
    archives.Open = Open;
    archives.Close = Close;
    _EPIRECORD record {};
    record.pObjectProcs = &objects;
    record.pArchiveProcs = &archives;
    const FSSpec path {};
    if (size == 0)
        return 0;
    for (const char* encoding : { "UTF-8", "CP932", "EUC-JP", "GBK" }) {
        platform::SetApplicationTextEncoding(encoding);
        g_file.assign(reinterpret_cast<const char*>(data), size);
        List list;
        Require(CTextPopup::OpenPopupString(&record, &path, list.data()) == 1);
        const auto entries = EntriesOf(list);
        std::vector<std::string> warnings;
        Require(telop::ReadEntries(g_file, warnings) == entries);

        // Half a character at an entry's end takes the CR after it, so not every list comes back.
        Require(CTextPopup::SavePopupString(&record, &path, list.data()) == 1);
        Require(g_file.size() == std::accumulate(entries.begin(), entries.end(), std::size_t { 0 },
                                                 [](std::size_t sum, const std::string& entry) {
                                                     return sum + entry.size() + 1;
                                                 }));
        if (!g_file.empty()) {
            List again;
            CTextPopup::OpenPopupString(&record, &path, again.data());
            Require(EntriesOf(again).size() <= entries.size());
        }

        List history {};
        for (const auto& entry : entries) {
            CTextPopup::InsertPopupString(entry.c_str(), history.data(), nullptr);
            CTextPopup::InsertPopupString(entry.c_str(), history.data(), list.data());
        }
        Require(EntriesOf(history).size() <= entries.size());
    }
    return 0;
}
