// SPDX-License-Identifier: BSD-3-Clause
// The tables of objects, handles and archives, and the record that carries all tables.
#include "host/Tables.h"

#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "host/Archive.h"
#include "host/Handle.h"
#include "host/Image.h"
#include "host/Ledger.h"

namespace host {

namespace {

void RecordMisuse(const std::string& what) {
    Ledger::Get().RecordMisuse(what);
}

struct ObjectProcs {
    static EPIObjectRef Create(std::int32_t kind) try {
        if (kind == epiObjectImage)
            return Image::Give(Image::MakeEmpty());
        if (kind == epiObjectArchive)
            return Archive::Give(std::make_unique<Archive>());
        RecordMisuse("create of an object of kind " + std::to_string(kind));
        return nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }

    static void Release(EPIObjectRef object, std::int32_t kind) {
        if (kind == epiObjectImage)
            End(Image::FromRef(static_cast<EPIImageRef>(object), "release"));
        else if (kind == epiObjectArchive)
            End(Archive::FromRef(static_cast<EPIArchiveRef>(object), "release"));
        else
            RecordMisuse("release of an object of kind " + std::to_string(kind));
    }

private:
    template <class Object>
    static void End(Object* object) {
        if (object && object->IsGiven())
            delete object;
        else if (object)
            RecordMisuse("release of an object that the host owns");
    }
};

struct HandleProcs {
    static void* Lock(EPIHandleRef ref) {
        auto* handle = Handle::FromRef(ref, "lock of a handle");
        return handle ? handle->Lock() : nullptr;
    }

    static void Unlock(EPIHandleRef ref) {
        if (auto* handle = Handle::FromRef(ref, "unlock of a handle"))
            handle->Unlock();
    }

    static void Dispose(EPIHandleRef ref) {
        auto* handle = Handle::FromRef(ref, "dispose of a handle");
        if (handle && handle->IsGiven())
            delete handle;
        else if (handle)
            RecordMisuse("dispose of a handle that the host owns");
    }
};

struct ArchiveProcs {
    static std::int32_t Read(EPIArchiveRef ref, void* buffer, std::int32_t length) {
        auto* archive = Archive::FromRef(ref, "read");
        return archive ? archive->Read(buffer, length) : 0;
    }

    static std::int32_t Write(EPIArchiveRef ref, void* buffer, std::int32_t length) {
        auto* archive = Archive::FromRef(ref, "write");
        const auto count = archive ? archive->Write(buffer, length) : 0;
        if (count != length)
            ReportFailure(archive);
        return count;
    }

    static std::int32_t Flush(EPIArchiveRef ref) {
        auto* archive = Archive::FromRef(ref, "flush");
        if (archive && archive->Flush())
            return 0;
        ReportFailure(archive);
        return -1;
    }

    static std::int32_t Length(EPIArchiveRef ref) {
        const auto* archive = Archive::FromRef(ref, "length");
        return archive ? archive->Length() : 0;
    }

    static std::int32_t IsLoading(EPIArchiveRef ref) {
        const auto* archive = Archive::FromRef(ref, "is-loading");
        return archive && archive->IsLoading() ? 1 : 0;
    }

    static std::int32_t Open(EPIArchiveRef ref, const FSSpec* file, std::uint32_t /*fileType*/,
                             std::int32_t mode) {
        auto* archive = PluginsOwn(ref, "open");
        if (!archive || !IsPath(file))
            return 0;
        if (archive->IsOpen()) {
            RecordMisuse("open of an archive that is open");
            return 0;
        }
        std::string why;
        const auto isOpen = archive->Open(file->path, mode, why);
        if (isOpen)
            Ledger::Get().Lend(Lent::kOpenArchive);
        else
            ReportFailure(archive);
        return isOpen ? 1 : 0;
    }

    static void Close(EPIArchiveRef ref) {
        auto* archive = PluginsOwn(ref, "close");
        if (!archive)
            return;
        if (archive->IsOpen())
            Ledger::Get().Return(Lent::kOpenArchive);
        archive->Close();
    }

private:
    // Opening and closing what the host lends is the host's own business.
    static Archive* PluginsOwn(EPIArchiveRef ref, const char* call) {
        auto* archive = Archive::FromRef(ref, call);
        if (!archive || archive->IsGiven())
            return archive;
        RecordMisuse(std::string(call) + " of an archive that the host owns");
        return nullptr;
    }

    static void ReportFailure(const Archive* archive) {
        auto* const frontEnd = TheFrontEnd();
        if (frontEnd && archive && !archive->Error().empty())
            frontEnd->FileFailed(archive->Error());
    }

    static bool IsPath(const FSSpec* file) {
        const auto isPath = file && file->path[0] != '\0' &&
                            std::memchr(file->path, '\0', sizeof file->path) != nullptr;
        if (!isPath)
            RecordMisuse("open of a file without a path that ends");
        return isPath;
    }
};

} // namespace

const EPIObjectProcs& ObjectTable() {
    static constexpr EPIObjectProcs table { sizeof table, ObjectProcs::Create,
                                            ObjectProcs::Release };
    return table;
}

const EPIHandleProcs& HandleTable() {
    static constexpr EPIHandleProcs table = [] {
        EPIHandleProcs procs {};
        procs.nSize = sizeof procs;
        procs.Lock = HandleProcs::Lock;
        procs.Unlock = HandleProcs::Unlock;
        procs.Dispose = HandleProcs::Dispose;
        return procs;
    }();
    return table;
}

const EPIArchiveProcs& ArchiveTable() {
    static constexpr EPIArchiveProcs table = [] {
        EPIArchiveProcs procs {};
        procs.nSize = sizeof procs;
        procs.Read = ArchiveProcs::Read;
        procs.Write = ArchiveProcs::Write;
        procs.Flush = ArchiveProcs::Flush;
        procs.Length = ArchiveProcs::Length;
        procs.IsLoading = ArchiveProcs::IsLoading;
        procs.Open = ArchiveProcs::Open;
        procs.Close = ArchiveProcs::Close;
        return procs;
    }();
    return table;
}

_EPIRECORD MakeRecord(LateEntries late) {
    _EPIRECORD record {};
    record.pObjectProcs = &ObjectTable();
    record.pOffscreenProcs = &OffscreenTable(late);
    record.pArchiveProcs = &ArchiveTable();
    record.pHandleProcs = &HandleTable();
    record.pHostProcs = &HostTable();
    if (TheFrontEnd()) {
        record.pParamProcs = &ParamTable();
        record.pWindowProcs = &WindowTable();
    }
    return record;
}

bool SetInfoString(_EPIRECORD& record, std::size_t index, std::string_view text, std::string& why) {
    constexpr std::size_t kRoom = sizeof record.szInfo1 - 1;
    char* const fields[] { record.szInfo1, record.szInfo2, record.szInfo3, record.szInfo4 };
    fields[index][text.copy(fields[index], kRoom)] = '\0';
    if (text.size() <= kRoom)
        return true;
    why = "information string " + std::to_string(index + 1) + " has " +
          std::to_string(text.size()) + " bytes, and " + std::to_string(kRoom) + " fit";
    return false;
}

} // namespace host
