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

// What comes of a call: its result, or what it threw.
template <class Call>
std::string Outcome(const Call& call) {
    try {
        return std::to_string(call());
    } catch (const HostFailure&) {
        return "the host's";
    } catch (const std::int32_t number) {
        return "number " + std::to_string(number);
    }
}

// Nothing stays open or unreleased whichever callback goes wrong, and what the host throws passes on.
TEST(ListFiles, TroubleWithAnyCallbackLeavesNothingBehind) {
    const Texts opening { "create2", "open1", "length", "read", "close", "release2" };
    const Texts saving { "create2", "open2", "write", "write", "flush", "close", "release2" };
    for (const bool saves : { false, true }) {
        const Texts& calls = saves ? saving : opening;
        const std::size_t work = calls.size() - 2; // closing and releasing can only throw
        for (std::size_t at = 0; at < 2 * calls.size(); ++at) {
            const std::size_t trouble = at / 2;
            const bool throws = at % 2 == 0;
            FileHost host("old\r");
            host.MakeTrouble(static_cast<int>(trouble),
                             throws ? FileHost::Trouble::kThrow : FileHost::Trouble::kFail);
            List list(saves ? Texts { "PAN", "FOLLOW" } : Numbered(1, 20));
            const std::string outcome = Outcome([&] {
                return saves
                           ? CTextPopup::SavePopupString(&host.record, &host.path, list.Entries())
                           : CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries());
            });
            EXPECT_EQ(outcome, throws                       ? "the host's"
                               : trouble >= work            ? "1"
                               : calls[trouble] == "length" ? "number 0"
                                                            : "0")
                << calls[trouble];
            std::string expected;
            for (std::size_t i = 0; i < calls.size(); ++i)
                expected += i <= trouble || (i >= work && trouble > 0) ? calls[i] + " " : "";
            EXPECT_EQ(host.Calls(), expected);
            if (trouble < work) {
                EXPECT_EQ(host.file, "old\r");
                EXPECT_EQ(list.All(), saves ? Texts({ "PAN", "FOLLOW" }) : Texts());
            }
            EXPECT_TRUE(list.GuardsAreWhole());
        }
    }
}

// An empty file, and a host whose length is not that of its file.
TEST(OpenPopupString, BelievesNoLength) {
    for (const std::int32_t length : { std::int32_t { 0 }, std::int32_t { -7 },
                                       std::numeric_limits<std::int32_t>::min(), 7, 100000 }) {
        FileHost host(length == 0 ? "" : "PAN");
        host.claimedLength = length;
        List list(Numbered(1, 3));
        const std::string outcome = Outcome(
            [&] { return CTextPopup::OpenPopupString(&host.record, &host.path, list.Entries()); });
        EXPECT_EQ(outcome, length <= 0 ? "number 0" : "0") << length;
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
