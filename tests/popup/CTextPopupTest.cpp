// SPDX-License-Identifier: BSD-3-Clause
#include "popup/CTextPopup.h"

#include <climits>
#include <cstring>
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "platform/TextEncoding.h"
#include "support/CountingHost.h"

namespace {

using Texts = std::vector<std::string>;

struct FileHost : CountingHost {
    explicit FileHost(const std::string& contents) : CountingHost(8, 8, 32) {
        file = contents;
        scribbles = true;
    }
};

// Of its own size on the heap, so that sanitizers see who leaves it.
using List = std::unique_ptr<char[][64]>;

List MakeList(const Texts& texts) {
    auto list = std::make_unique<char[][64]>(20);
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i].copy(list[i], 64);
    return list;
}

// All twenty, the empty ones at the end left out.
Texts TextsOf(const List& list) {
    Texts texts;
    for (std::size_t i = 0; i < 20; ++i)
        texts.emplace_back(list[i], strnlen(list[i], 64));
    while (!texts.empty() && texts.back().empty())
        texts.pop_back();
    return texts;
}

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
                    const List& list) {
    try {
        return std::to_string(call(&host.record, &host.path, list.get()));
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
        const List list = MakeList(Numbered(1, 20));
        EXPECT_EQ(Outcome(CTextPopup::OpenPopupString, host, list), "1");
        EXPECT_EQ(TextsOf(list), row.list) << row.encoding << ": " << row.file;
    }
    platform::SetApplicationTextEncoding("UTF-8");
}

// Nothing stays open or unreleased whichever callback goes wrong, and what the host throws passes on.
TEST(ListFiles, TroubleWithAnyCallbackLeavesNothingBehind) {
    using Trouble = CountingHost::Trouble;
    for (const bool saves : { false, true }) {
        // Make, open, measure, read or make, open, write twice, flush; then close and release.
        const int work = saves ? 5 : 4;
        for (int at = 0; at < work + 2; ++at) {
            for (const Trouble trouble : { Trouble::kFail, Trouble::kThrow }) {
                FileHost host("old\r");
                host.MakeTrouble(at, trouble);
                const List list = MakeList({ "PAN", "FOLLOW" });
                const auto outcome = Outcome(
                    saves ? CTextPopup::SavePopupString : CTextPopup::OpenPopupString, host, list);
                EXPECT_EQ(outcome, trouble == Trouble::kThrow ? "the host's"
                                   : at >= work               ? "1"
                                   : !saves && at == 2        ? "number 0"
                                                              : "0")
                    << saves << at;
                EXPECT_GT(host.CallbacksSoFar(), at) << saves;
                EXPECT_EQ(host.LocksOutstanding(), 0) << saves << at;
                if (at < work) {
                    EXPECT_EQ(host.file, "old\r") << saves << at;
                    EXPECT_EQ(TextsOf(list), saves ? Texts({ "PAN", "FOLLOW" }) : Texts());
                }
            }
        }
    }
}

// An empty file, and a host whose length is not that of its file.
TEST(OpenPopupString, BelievesNoLength) {
    for (const std::int32_t length : { 0, -7, INT_MIN, 7, 100000 }) {
        FileHost host(length == 0 ? "" : "PAN");
        host.claimedLength = length;
        const List list = MakeList(Numbered(1, 3));
        EXPECT_EQ(Outcome(CTextPopup::OpenPopupString, host, list), length <= 0 ? "number 0" : "0");
        EXPECT_EQ(TextsOf(list), Texts {}) << length;
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
        const List list = MakeList(texts);
        EXPECT_EQ(Outcome(CTextPopup::SavePopupString, host, list), "1");
        EXPECT_EQ(host.file, file);
        EXPECT_EQ(TextsOf(list), texts) << "the host scribbles over what it was given";
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
        const List history = MakeList(row.history);
        const List registered = MakeList(row.registered);
        CTextPopup::InsertPopupString(row.text.c_str(), history.get(),
                                      row.registered.empty() ? nullptr : registered.get());
        EXPECT_EQ(TextsOf(history), row.after) << row.text;
        EXPECT_EQ(TextsOf(registered), row.registered);
    }
}

} // namespace
