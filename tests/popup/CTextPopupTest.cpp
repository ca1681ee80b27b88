// SPDX-License-Identifier: BSD-3-Clause
#include "popup/CTextPopup.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include <gmock/gmock.h>

#include "FileHost.h"
#include "platform/TextEncoding.h"

namespace {

using Texts = std::vector<std::string>;

// One list with guards on both sides, which no call may touch.
class List {
public:
    List() { std::memset(&m_memory, kGuard, sizeof m_memory); }
    explicit List(const Texts& texts) : List() {
        std::memset(m_memory.entries, 0, sizeof m_memory.entries);
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i].copy(m_memory.entries[i], 64);
    }

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
    bool GuardsAreWhole() const {
        const auto isGuard = [](char c) { return c == kGuard; };
        return std::all_of(std::begin(m_memory.before), std::end(m_memory.before), isGuard) &&
               std::all_of(std::begin(m_memory.after), std::end(m_memory.after), isGuard);
    }

private:
    static constexpr char kGuard = 0x5A;
    struct Memory {
        char before[64];
        char entries[20][64];
        char after[64];
    } m_memory;
};

// The application's encoding for as long as it lives.
class ScopedEncoding {
public:
    explicit ScopedEncoding(const char* name) { platform::SetApplicationTextEncoding(name); }
    ScopedEncoding(const ScopedEncoding&) = delete;
    ScopedEncoding& operator=(const ScopedEncoding&) = delete;
    ~ScopedEncoding() { platform::SetApplicationTextEncoding(m_old); }

private:
    std::string m_old = platform::ApplicationTextEncoding();
};

Texts Numbered(int first, int last) {
    Texts texts;
    for (int i = first; i <= last; ++i)
        texts.push_back("text " + std::to_string(i));
    return texts;
}

std::string Joined(const Texts& texts) {
    std::string file;
    for (const auto& text : texts)
        file += text + "\r";
    return file;
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
             Row { "UTF-8", "PAN\rFOLLOW", { "PAN", "FOLLOW" } },
             Row { "UTF-8", "\r\rPAN\r\rFOLLOW\r\r", { "PAN", "FOLLOW" } },
             Row { "UTF-8", "\r", {} },
             Row { "UTF-8", "PAN\r\nFOLLOW\r\n", { "PAN", "\nFOLLOW", "\n" } },
             Row { "UTF-8", "PAN\nFOLLOW\n", { "PAN\nFOLLOW\n" } },
             Row { "UTF-8", x63 + "\r" + x100 + "\rA", { x63, x63, "A" } },
             Row { "UTF-8", x100, { x63 } },
             Row { "UTF-8", Joined(Numbered(1, 25)), Numbered(1, 20) },
             Row { "UTF-8", Joined(Numbered(1, 19)) + "end",
                   [] {
                       auto texts = Numbered(1, 19);
                       texts.emplace_back("end");
                       return texts;
                   }() },
             // Three bytes, then the break: nothing swallows it.
             Row { "UTF-8", "\xE3\x81\x82\r\xE3\x82\xAB\r", { "\xE3\x81\x82", "\xE3\x82\xAB" } },
             // The cut takes no heed of characters.
             Row { "UTF-8",
                   std::string(62, 'x') + "\xE3\x81\x82\rA",
                   { std::string(62, 'x') + "\xE3", "A" } },
             // A lead byte takes the byte after it, CR too; at the end there is none to take.
             Row { "CP932", "\x81\rA\rB", { "\x81\rA", "B" } },
             Row { "CP932", "\x83\x4A\rB\x81", { "\x83\x4A", "B\x81" } },
             Row { "CP932", "\xB1\rB", { "\xB1", "B" } },
             Row { "UTF-8", "\x81\rA", { "\x81", "A" } },
             Row { "EUC-JP", "\x8F\xB0\xA1\rB", { "\x8F\xB0\xA1", "B" } },
             // Behind a zero byte an entry ends, and the walk goes on.
             Row { "UTF-8", std::string("A\0B\rC", 5), { "A", "C" } },
         }) {
        const ScopedEncoding encoding(row.encoding);
        FileHost host(row.file);
        List list;
        EXPECT_EQ(CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries()), 1);
        EXPECT_EQ(list.All(), row.list) << row.encoding << ": " << row.file;
        EXPECT_EQ(host.Calls(), "create2 open1 length read close release2 ");
        EXPECT_TRUE(list.GuardsAreWhole());
    }
}

TEST(OpenPopupString, KeepsNothingOfTheOldList) {
    FileHost host("A\r");
    List list(Numbered(1, 20));
    CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries());
    EXPECT_EQ(list.All(), Texts { "A" });
    const auto* bytes = reinterpret_cast<const char*>(list.Entries());
    EXPECT_TRUE(std::all_of(bytes + 1, bytes + 1280, [](char c) { return c == '\0'; }));
}

// Nothing stays open or unreleased, and the list is empty, whichever callback goes wrong.
TEST(OpenPopupString, FailsAsAWhole) {
    using Trouble = FileHost::Trouble;
    struct Row {
        int callback;
        const char* failed;
        const char* threw;
        bool throwsZero;
    };
    for (const Row& row : {
             Row { 0, "create2 ", "create2 ", false },
             Row { 1, "create2 open1 close release2 ", "create2 open1 close release2 ", false },
             Row { 2, "create2 open1 length close release2 ",
                   "create2 open1 length close release2 ", true },
             Row { 3, "create2 open1 length read close release2 ",
                   "create2 open1 length read close release2 ", false },
         }) {
        for (const Trouble trouble : { Trouble::kFail, Trouble::kThrow }) {
            FileHost host("PAN\rFOLLOW\r");
            host.MakeTrouble(row.callback, trouble);
            List list(Numbered(1, 20));
            const auto open = [&] {
                return CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries());
            };
            if (trouble == Trouble::kThrow)
                EXPECT_THROW(open(), HostFailure) << row.callback;
            else if (row.throwsZero)
                EXPECT_THROW(open(), std::int32_t) << row.callback;
            else
                EXPECT_EQ(open(), 0) << row.callback;
            EXPECT_EQ(host.Calls(), trouble == Trouble::kThrow ? row.threw : row.failed);
            EXPECT_EQ(list.All(), Texts {});
            EXPECT_TRUE(list.GuardsAreWhole());
        }
    }
}

TEST(OpenPopupString, ThrowsZeroForAFileWithoutBytes) {
    FileHost host("");
    List list(Numbered(1, 3));
    try {
        CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries());
        ADD_FAILURE() << "an empty file was taken for a list";
    } catch (const std::int32_t thrown) {
        EXPECT_EQ(thrown, 0);
    }
    EXPECT_EQ(list.All(), Texts {});
    EXPECT_EQ(host.Calls(), "create2 open1 length close release2 ");
}

// A host whose length is not that of its file.
TEST(OpenPopupString, BelievesNoLength) {
    for (const std::int32_t length : { std::int32_t { 0 }, std::int32_t { -7 },
                                       std::numeric_limits<std::int32_t>::min(), 7, 100000 }) {
        FileHost host("PAN");
        host.claimedLength = length;
        List list;
        const auto open = [&] {
            return CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries());
        };
        if (length <= 0)
            EXPECT_THROW(open(), std::int32_t) << length;
        else
            EXPECT_EQ(open(), 0) << length;
        EXPECT_EQ(list.All(), Texts {}) << length;
    }
}

TEST(SavePopupString, WritesUpToTheFirstEmptyEntry) {
    const std::string x64(64, 'x');
    struct Row {
        Texts list;
        std::string file;
        int writes;
    };
    for (const Row& row : {
             Row { { "PAN", "FOLLOW", "", "WIPE" }, "PAN\rFOLLOW\r", 2 },
             Row { {}, "", 0 },
             Row { Numbered(1, 20), Joined(Numbered(1, 20)), 20 },
             Row { { std::string(63, 'y'), "\nA" }, std::string(63, 'y') + "\r\nA\r", 2 },
             // An entry whose end is missing is its own 64 bytes and no more.
             Row { { x64, "A" }, x64 + "\rA\r", 2 },
         }) {
        FileHost host("old");
        List list(row.list);
        const Texts before = list.All();
        EXPECT_EQ(CTextPopup::SavePopupString(&host.record, &host.path, list.Entries()), 1);
        EXPECT_EQ(host.file, row.file);
        std::string calls = "create2 open2 ";
        for (int i = 0; i < row.writes; ++i)
            calls += "write ";
        EXPECT_EQ(host.Calls(), calls + "flush close release2 ");
        EXPECT_EQ(list.All(), before) << "the host scribbles over what it was given";
    }
}

TEST(SavePopupString, TellsOfAListThatDidNotArrive) {
    using Trouble = FileHost::Trouble;
    const std::vector<std::string> calls {
        "create2 ",
        "create2 open2 close release2 ",
        "create2 open2 write close release2 ",
        "create2 open2 write write close release2 ",
        "create2 open2 write write flush close release2 ",
    };
    for (int callback = 0; callback < 5; ++callback) {
        FileHost host("old");
        host.MakeTrouble(callback, Trouble::kFail);
        List list(Texts { "PAN", "FOLLOW" });
        EXPECT_EQ(CTextPopup::SavePopupString(&host.record, &host.path, list.Entries()), 0);
        EXPECT_EQ(host.Calls(), calls[static_cast<std::size_t>(callback)]);
        EXPECT_EQ(host.file, "old");

        FileHost thrower("old");
        thrower.MakeTrouble(callback, Trouble::kThrow);
        EXPECT_THROW(CTextPopup::SavePopupString(&thrower.record, &thrower.path, list.Entries()),
                     HostFailure);
        EXPECT_EQ(thrower.file, "old");
        if (callback > 0) {
            EXPECT_THAT(thrower.Calls(), testing::EndsWith("close release2 ")) << callback;
        }
    }
}

TEST(InsertPopupString, KeepsTheOrderAndDropsTheOldest) {
    const auto full = Numbered(1, 20);
    const auto shifted = [] {
        auto texts = Numbered(2, 20);
        texts.emplace_back("new");
        return texts;
    }();
    struct Row {
        const char* text;
        Texts history, registered, after;
    };
    for (const Row& row : {
             Row { "new", {}, {}, { "new" } },
             Row { "new", { "A", "B" }, {}, { "A", "B", "new" } },
             Row { "A", { "A", "B" }, {}, { "A", "B" } },
             Row { "a", { "A", "B" }, {}, { "A", "B", "a" } },
             Row { "A ", { "A", "B" }, {}, { "A", "B", "A " } },
             Row { "", { "A" }, {}, { "A" } },
             Row { "PAN", { "A" }, { "WIPE", "PAN" }, { "A" } },
             Row { "PAN", { "A" }, { "WIPE", "", "PAN" }, { "A", "PAN" } },
             Row { "new", full, {}, shifted },
             Row { "new", full, { "new" }, full },
             Row { "text 1", full, {}, full },
             Row { "text 20", full, full, full },
             // What stands behind the first empty entry is not part of the history.
             Row { "B", { "A", "", "B" }, {}, { "A", "B", "B" } },
         }) {
        List history(row.history);
        List registered(row.registered);
        CTextPopup::InsertPopupString(row.text, history.Entries(), registered.Entries());
        EXPECT_EQ(history.All(), row.after) << row.text;
        EXPECT_EQ(registered.All(), List(row.registered).All());
        EXPECT_TRUE(history.GuardsAreWhole());
    }
    List history;
    std::memset(history.Entries(), 0, sizeof(char[20][64]));
    CTextPopup::InsertPopupString("PAN", history.Entries(), nullptr);
    EXPECT_EQ(history.All(), Texts { "PAN" });
}

TEST(InsertPopupString, CutsATextThatIsTooLongAtAWholeCharacter) {
    const ScopedEncoding encoding("UTF-8");
    const std::string x62(62, 'x');
    List history(Texts {});
    for (int i = 0; i < 2; ++i) // the second time it is there already
        CTextPopup::InsertPopupString((x62 + "\xE3\x81\x82").c_str(), history.Entries(), nullptr);
    CTextPopup::InsertPopupString(std::string(200, 'y').c_str(), history.Entries(), nullptr);
    EXPECT_EQ(history.All(), (Texts { x62, std::string(63, 'y') }));
    EXPECT_TRUE(history.GuardsAreWhole());
}

} // namespace
