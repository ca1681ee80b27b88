// SPDX-License-Identifier: BSD-3-Clause
// The walk over a list's file, and the way of a list through the host's archives.
#include "popup/CTextPopup.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <string_view>

#include "effect/PIArchive.h"
#include "platform/TextEncoding.h"
#include "render/LineWalk.h"
#include "render/TextFields.h"

namespace {

constexpr std::uint32_t kFileType = EPI_FOUR_CC('T', 'E', 'X', 'T');

using PopupEntry = char[64];
static_assert(sizeof(_POPUPSTRING::szPreset) == kPopupEntries * sizeof(PopupEntry));
static_assert(sizeof(_POPUPSTRING::szHistory) == kPopupEntries * sizeof(PopupEntry));

using PopupList = std::span<PopupEntry, kPopupEntries>;

PopupList ListAt(char (*entries)[64]) {
    return PopupList(entries, kPopupEntries);
}

// An archive of the plug-in's own, which its wrapper releases. No archive is made when the host has
// no memory; it cannot be opened then.
PIArchive MakeArchive(_EPIRECORD& record) {
    return { record.pObjectProcs, record.pArchiveProcs,
             static_cast<EPIArchiveRef>(record.pObjectProcs->Create(epiObjectArchive)),
             epiObjectArchive };
}

// Copies as many bytes as leave room for the NUL, whatever characters they belong to, and clears the
// rest of the field.
void SetEntry(PopupEntry& entry, std::string_view bytes) {
    const std::size_t length = std::min(bytes.size(), sizeof entry - 1);
    std::memmove(entry, bytes.data(), length);
    std::memset(entry + length, 0, sizeof entry - length);
}

// A file is read as a whole, so that a list is never filled with a part of it.
class WholeArchive {
public:
    // Throws when there are no bytes, or more than memory has room for.
    explicit WholeArchive(PIArchive& archive) : m_size(archive.Length()) {
        if (m_size > 0)
            m_bytes.reset(new (std::nothrow) char[static_cast<std::size_t>(m_size) + 1]);
        if (!m_bytes)
            throw std::int32_t { 0 };
        m_isWhole = archive.Read(m_bytes.get(), m_size) == m_size;
    }

    bool IsWhole() const { return m_isWhole; }
    std::string_view Text() const { return { m_bytes.get(), static_cast<std::size_t>(m_size) }; }

private:
    std::int32_t m_size;
    std::unique_ptr<char[]> m_bytes;
    bool m_isWhole = false;
};

// The cut of an entry may leave a part of a character in it; it is drawn as nothing. Files that other
// programs have written this way load alike everywhere.
void FillList(PopupList list, std::string_view text) {
    auto entry = list.begin();
    std::size_t start = 0;
    for (std::size_t at = 0; entry != list.end() && start < text.size();) {
        while (at < text.size() && text[at] != '\r')
            at += CharacterStep(text.substr(at));
        if (at > start)
            SetEntry(*entry++, text.substr(start, at - start));
        start = ++at;
    }
}

// The host may change the buffer that it is given, so it gets a copy.
bool WriteEntry(PIArchive& archive, std::string_view text) {
    std::array<char, sizeof(PopupEntry) + 1> line {};
    *std::copy(text.begin(), text.end(), line.begin()) = '\r';
    const auto length = static_cast<std::int32_t>(text.size() + 1);
    return archive.Write(line.data(), length) == length;
}

bool Contains(PopupList list, std::string_view text) {
    for (const PopupEntry& entry : list) {
        if (entry[0] == '\0')
            return false;
        if (FieldText(entry) == text)
            return true;
    }
    return false;
}

// The first empty entry; in a full list the last one, after the oldest has left.
PopupEntry& MakeRoom(PopupList list) {
    for (PopupEntry& entry : list)
        if (entry[0] == '\0')
            return entry;
    std::memmove(list.data(), list.data() + 1, (kPopupEntries - 1) * sizeof(PopupEntry));
    return list.back();
}

} // namespace

std::int32_t CTextPopup::OpenPopupString(_EPIRECORD* record, const FSSpec* file, char (*list)[64]) {
    std::memset(list, 0, kPopupEntries * sizeof(PopupEntry));
    PIArchive archive = MakeArchive(*record);
    if (!archive.Open(*file, kFileType, epiArchiveRead))
        return 0;
    const WholeArchive bytes(archive);
    if (!bytes.IsWhole())
        return 0;
    FillList(ListAt(list), bytes.Text());
    return 1;
}

// Without the flush a host that has taken only a part of the list keeps the file as it was.
std::int32_t CTextPopup::SavePopupString(_EPIRECORD* record, const FSSpec* file, char (*list)[64]) {
    PIArchive archive = MakeArchive(*record);
    if (!archive.Open(*file, kFileType, epiArchiveWrite))
        return 0;
    for (const PopupEntry& entry : ListAt(list)) {
        if (entry[0] == '\0')
            break;
        if (!WriteEntry(archive, FieldText(entry)))
            return 0;
    }
    return archive.Flush() == 0 ? 1 : 0;
}

std::int32_t CTextPopup::CountEntries(const char (&list)[kPopupEntries][64]) {
    std::int32_t count = 0;
    while (count < static_cast<std::int32_t>(kPopupEntries) && list[count][0] != '\0')
        ++count;
    return count;
}

// A text that is used again keeps its place.
void CTextPopup::InsertPopupString(const char* text, char (*history)[64], char (*registered)[64]) {
    const std::string_view fitting = platform::CutToWholeCharacters(text, sizeof(PopupEntry) - 1);
    if (fitting.empty() || (registered && Contains(ListAt(registered), fitting)) ||
        Contains(ListAt(history), fitting))
        return;
    SetEntry(MakeRoom(ListAt(history)), fitting);
}
