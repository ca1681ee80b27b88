// SPDX-License-Identifier: BSD-3-Clause
// A scoped host archive: closes the file that its user opened in it, or tried to.
#pragma once

#include "effect/PIObject.h"

class PIArchive : public PIObject {
public:
    PIArchive(const EPIObjectProcs* objectProcs, const EPIArchiveProcs* archiveProcs,
              EPIArchiveRef archive, std::int32_t kind = 0)
        : PIObject(objectProcs, archive, kind), pArchiveProcs(archiveProcs) {}
    ~PIArchive() noexcept(false) override {
        const AtEnd close(m_unwinding, [this] {
            if (m_open)
                pArchiveProcs->Close(Archive());
        });
    }

    bool Open(const FSSpec& file, std::uint32_t fileType, std::int32_t mode) {
        if (!m_object)
            return false;
        m_open = 1;
        return pArchiveProcs->Open(Archive(), &file, fileType, mode) != 0;
    }
    bool IsLoading() const { return pArchiveProcs->IsLoading(Archive()) != 0; }
    std::int32_t Length() const { return pArchiveProcs->Length(Archive()); }
    std::int32_t Read(void* buffer, std::int32_t length) {
        return pArchiveProcs->Read(Archive(), buffer, length);
    }
    std::int32_t Write(void* buffer, std::int32_t length) {
        return pArchiveProcs->Write(Archive(), buffer, length);
    }
    std::int32_t Flush() { return pArchiveProcs->Flush(Archive()); }

private:
    EPIArchiveRef Archive() const { return static_cast<EPIArchiveRef>(m_object); }

    const EPIArchiveProcs* pArchiveProcs;
    std::int32_t m_open = 0;
};
