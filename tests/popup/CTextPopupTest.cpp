// SPDX-License-Identifier: BSD-3-Clause
#include "popup/CTextPopup.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <optional>
#include <vector>

#include <gmock/gmock.h>

#include "platform/TextEncoding.h"

namespace {

using Texts = std::vector<std::string>;

struct HostFailure {}; // what a callback throws

// A host in memory with one file and one archive. It writes down what it was asked for, and the
// callback number troubleAt (from 0) fails or throws; closing and releasing can only throw.
struct FileHost {
    explicit FileHost(std::string contents) : file(std::move(contents)) {
        s_host = this;
        objects.nSize = sizeof objects;
        objects.Create = [](std::int32_t kind) -> EPIObjectRef {
            return s_host->InTrouble("create" + std::to_string(kind)) ? nullptr : s_host;
        };
        objects.Release = [](EPIObjectRef, std::int32_t kind) {
            s_host->InTrouble("release" + std::to_string(kind));
        };
        archives.nSize = sizeof archives;
        archives.Open = [](EPIArchiveRef, const FSSpec* spec, std::uint32_t type,
                           std::int32_t mode) -> std::int32_t {
            return !s_host->InTrouble("open" + std::to_string(mode)) && spec == &s_host->path &&
                   type == EPI_FOUR_CC('T', 'E', 'X', 'T');
        };
        archives.Length = [](EPIArchiveRef) -> std::int32_t {
            const auto size = static_cast<std::int32_t>(s_host->file.size());
            return s_host->InTrouble("length") ? -1 : s_host->claimedLength.value_or(size);
        };
        // A read that fails has filled a part of the buffer already.
        archives.Read = [](EPIArchiveRef, void* buffer, std::int32_t length) -> std::int32_t {
            const auto asked = std::min(s_host->file.size(), static_cast<std::size_t>(length));
            const std::size_t count = s_host->InTrouble("read") ? asked / 2 : asked;
            std::memcpy(buffer, s_host->file.data(), count);
            return static_cast<std::int32_t>(count);
        };
        archives.Write = [](EPIArchiveRef, void* buffer, std::int32_t length) -> std::int32_t {
            if (s_host->InTrouble("write"))
                return 0;
            s_host->written.append(static_cast<char*>(buffer), static_cast<std::size_t>(length));
            std::memset(buffer, '#', static_cast<std::size_t>(length));
            return length;
        };
        archives.Flush = [](EPIArchiveRef) -> std::int32_t {
            if (s_host->InTrouble("flush"))
                return -1;
            s_host->file = s_host->written;
            return 0;
        };
        archives.Close = [](EPIArchiveRef) { s_host->InTrouble("close"); };
        record.pObjectProcs = &objects;
        record.pArchiveProcs = &archives;
    }

    bool InTrouble(const std::string& call) {
        calls += call + " ";
        if (troubleAt-- != 0)
            return false;
        if (throws)
            throw HostFailure();
        return true;
    }

    static FileHost* s_host;
    EPIObjectProcs objects {};
    EPIArchiveProcs archives {};
    _EPIRECORD record {};
    FSSpec path {};
    std::string file, written, calls;
    std::optional<std::int32_t> claimedLength;
    int troubleAt = -1;
    bool throws = false;
};
FileHost* FileHost::s_host = nullptr;

// One list with guards on both sides, which no call may touch.
class List {
public:
    explicit List(const Texts& texts = {}) {
        std::memset(&m_memory, kGuard, sizeof m_memory);
        std::memset(m_memory.entries, 0, sizeof m_memory.entries);
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i].copy(m_memory.entries[i], 64);
    }
    ~List() {
        for (const auto& guard : { m_memory.before, m_memory.after })
            EXPECT_EQ(std::count(guard, guard + 64, kGuard), 64);
    }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    char (*Entries())[64] { return m_memory.entries; }
    // All twenty, the empty ones at the end left out.
    Texts All() const {
        Texts texts;
        for (const auto& entry : m_memory.entries)
            texts.emplace_back(entry, strnlen(entry, sizeof entry));
        while (!texts.empty() && texts.back().empty())
            texts.pop_back();
        return texts;
    }

private:
    static constexpr char kGuard = 0x5A;
    struct {
        char before[64], entries[20][64], after[64];
    } m_memory;
};

Texts Numbered(int first, int last, const Texts& more = {}) {
    Texts texts;
    for (int i = first; i <= last; ++i)
        texts.push_back("text " + std::to_string(i));
    texts.insert(texts.end(), more.begin(), more.end());
    return texts;
}

std::string Joined(const Texts& texts) {
    std::string file;
    for (const auto& text : texts)
        file += text + "\r";
    return file;
}

// What comes of opening or saving: its result, or what it threw.
std::string Outcome(std::int32_t (*call)(_EPIRECORD*, const FSSpec*, char (*)[64]), FileHost& host,
                    List& list) {
    try {
        return std::to_string(call(&host.record, &host.path, list.Entries()));
    } catch (const HostFailure&) {
        return "the host's";
    } catch (const std::int32_t number) {
        return "number " + std::to_string(number);
    }
}

TEST(OpenPopupString, SplitsWhatIsInTheFile) {
    const std::string x63(63, 'x');
    const std::string x100(100, 'x');
    struct Row {
        const char* encoding;
        std::string file;
        Texts list;
    };
    for (const Row& row : {
             Row { "UTF-8", "PAN\rFOLLOW\r", { "PAN", "FOLLOW" } },
             Row { "UTF-8", "\r\rPAN\r\rFOLLOW", { "PAN", "FOLLOW" } },
             Row { "UTF-8", "PAN\r\nFOLLOW\r\n", { "PAN", "\nFOLLOW", "\n" } },
             Row { "UTF-8", x63 + "\r" + x100 + "\rA", { x63, x63, "A" } },
             Row { "UTF-8", Joined(Numbered(1, 25)), Numbered(1, 20) },
             // Three bytes, then the break: nothing swallows it.
             Row { "UTF-8", "\xE3\x81\x82\r\xE3\x82\xAB\r", { "\xE3\x81\x82", "\xE3\x82\xAB" } },
             // The cut takes no heed of characters.
             Row { "UTF-8",
                   std::string(62, 'x') + "\xE3\x81\x82\rA",
                   { std::string(62, 'x') + "\xE3", "A" } },
             // A lead byte takes the byte after it, CR too; at the end there is none to take.
             Row { "CP932", "\x81\rA\rB", { "\x81\rA", "B" } },
             Row { "CP932", "\x83\x4A\rB\x81", { "\x83\x4A", "B\x81" } },
             // Behind a zero byte an entry ends, and the walk goes on.
             Row { "UTF-8", std::string("A\0B\rC", 5), { "A", "C" } },
         }) {
        platform::SetApplicationTextEncoding(row.encoding);
        FileHost host(row.file);
        List list(Numbered(1, 20));
        EXPECT_EQ(Outcome(CTextPopup::OpenPopupString, host, list), "1");
        EXPECT_EQ(list.All(), row.list) << row.encoding << ": " << row.file;
        EXPECT_EQ(host.calls, "create2 open1 length read close release2 ");
    }
    platform::SetApplicationTextEncoding("UTF-8");
}

// Nothing stays open or unreleased whichever callback goes wrong, and what the host throws passes on.
TEST(ListFiles, TroubleWithAnyCallbackLeavesNothingBehind) {
    const Texts opening { "create2", "open1", "length", "read", "close", "release2" };
    const Texts saving { "create2", "open2", "write", "write", "flush", "close", "release2" };
    for (const bool saves : { false, true }) {
        const Texts& calls = saves ? saving : opening;
        const std::size_t work = calls.size() - 2;
        for (std::size_t at = 0; at < 2 * calls.size(); ++at) {
            const std::size_t trouble = at / 2;
            FileHost host("old\r");
            host.troubleAt = static_cast<int>(trouble);
            host.throws = at % 2 == 0;
            List list({ "PAN", "FOLLOW" });
            const auto outcome = Outcome(
                saves ? CTextPopup::SavePopupString : CTextPopup::OpenPopupString, host, list);
            EXPECT_EQ(outcome, host.throws                  ? "the host's"
                               : trouble >= work            ? "1"
                               : calls[trouble] == "length" ? "number 0"
                                                            : "0")
                << calls[trouble];
            std::string expected;
            for (std::size_t i = 0; i < calls.size(); ++i)
                expected += i <= trouble || (i >= work && trouble > 0) ? calls[i] + " " : "";
            EXPECT_EQ(host.calls, expected);
            if (trouble < work) {
                EXPECT_EQ(host.file, "old\r");
                EXPECT_EQ(list.All(), saves ? Texts({ "PAN", "FOLLOW" }) : Texts());
            }
        }
    }
}

// An empty file, and a host whose length is not that of its file.
TEST(OpenPopupString, BelievesNoLength) {
    for (const std::int32_t length : { 0, -7, INT_MIN, 7, 100000 }) {
        FileHost host(length == 0 ? "" : "PAN");
        host.claimedLength = length;
        List list(Numbered(1, 3));
        EXPECT_EQ(Outcome(CTextPopup::OpenPopupString, host, list), length <= 0 ? "number 0" : "0");
        EXPECT_EQ(list.All(), Texts {}) << length;
    }
}

TEST(SavePopupString, WritesUpToTheFirstEmptyEntry) {
    const std::string x64(64, 'x');
    const std::pair<Texts, std::string> rows[] {
        { { "PAN", "FOLLOW", "", "WIPE" }, "PAN\rFOLLOW\r" },
        { Numbered(1, 20), Joined(Numbered(1, 20)) },
        { { std::string(63, 'y'), "\nA" }, std::string(63, 'y') + "\r\nA\r" },
        // An entry whose end is missing is its own 64 bytes and no more.
        { { x64, "A" }, x64 + "\rA\r" },
    };
    for (const auto& [texts, file] : rows) {
        FileHost host("old");
        List list(texts);
        EXPECT_EQ(Outcome(CTextPopup::SavePopupString, host, list), "1");
        EXPECT_EQ(host.file, file);
        EXPECT_EQ(list.All(), texts) << "the host scribbles over what it was given";
    }
}

TEST(InsertPopupString, KeepsTheOrderAndDropsTheOldest) {
    const auto full = Numbered(1, 20);
    struct Row {
        std::string text;
        Texts history, registered, after;
    };
    const std::string x62(62, 'x');
    for (const Row& row : {
             Row { "new", {}, {}, { "new" } },
             Row { "A", { "A", "B" }, {}, { "A", "B" } },
             Row { "", { "A" }, {}, { "A" } },
             Row { "PAN", { "A" }, { "WIPE", "PAN" }, { "A" } },
             Row { "PAN", { "A" }, { "WIPE", "", "PAN" }, { "A", "PAN" } },
             Row { "new", full, {}, Numbered(2, 20, { "new" }) },
             Row { "text 20", full, full, full },
             // What stands behind the first empty entry is not part of the history.
             Row { "B", { "A", "", "B" }, {}, { "A", "B", "B" } },
             // Too long: cut at a whole character, and known again when it is.
             Row { x62 + "\xE3\x81\x82", { "A" }, {}, { "A", x62 } },
             Row { x62 + "\xE3\x81\x82", { x62 }, {}, { x62 } },
             Row { std::string(200, 'y'), {}, {}, { std::string(63, 'y') } },
         }) {
        List history(row.history);
        List registered(row.registered);
        CTextPopup::InsertPopupString(row.text.c_str(), history.Entries(),
                                      row.registered.empty() ? nullptr : registered.Entries());
        EXPECT_EQ(history.All(), row.after) << row.text;
        EXPECT_EQ(registered.All(), row.registered);
    }
}

} // namespace
