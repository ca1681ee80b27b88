// SPDX-License-Identifier: BSD-3-Clause
#include "host/Archive.h"

#include <cstring>
#include <filesystem>

#include "LedgerTest.h"
#include "host/Tables.h"
#include "host/WholeFile.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint32_t kText = EPI_FOUR_CC('T', 'E', 'X', 'T');

struct Listener : FrontEnd {
    void FileFailed(const std::string& why) override { heard = why; }

    std::string heard;
};

// An archive that a plug-in makes and opens through the tables.
class ArchiveTest : public LedgerTest {
protected:
    std::int32_t Open(const std::filesystem::path& path, std::int32_t mode) {
        FSSpec file {};
        std::strcpy(file.path, path.c_str());
        return procs.Open(archive, &file, kText, mode);
    }
    std::int32_t Write(std::string text) {
        return procs.Write(archive, text.data(), static_cast<std::int32_t>(text.size()));
    }
    std::string Contents(const std::filesystem::path& path) {
        std::string why;
        const auto bytes = ReadWholeFile(path, 1000, why);
        return bytes ? std::string(bytes->begin(), bytes->end()) : why;
    }
    void CloseAndRelease() {
        procs.Close(archive);
        ObjectTable().Release(archive, epiObjectArchive);
    }

    TemporaryFolder folder;
    const EPIArchiveProcs& procs = ArchiveTable();
    EPIArchiveRef archive = static_cast<EPIArchiveRef>(ObjectTable().Create(epiObjectArchive));
};

TEST_F(ArchiveTest, AFileIsReplacedByFlushAndReadToItsEndAndNoFurther) {
    const auto path = folder.Write("list.txt", "old");
    ASSERT_NE(Open(path, epiArchiveWrite), 0);
    EXPECT_EQ(procs.IsLoading(archive), 0);
    Write("abc");
    EXPECT_EQ(Write("de"), 2);
    EXPECT_EQ(Contents(path), "old");
    EXPECT_EQ(procs.Flush(archive), 0);
    EXPECT_EQ(Contents(path), "abcde");
    procs.Close(archive);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);

    ASSERT_NE(Open(path, epiArchiveRead), 0);
    EXPECT_NE(procs.IsLoading(archive), 0);
    EXPECT_EQ(procs.Length(archive), 5);
    char buffer[8] = "-------";
    EXPECT_EQ(procs.Read(archive, buffer, 3), 3);
    EXPECT_EQ(procs.Read(archive, buffer, 7), 2);
    EXPECT_STREQ(buffer, "dec----");
    EXPECT_EQ(procs.Read(archive, buffer, 7), 0);
    CloseAndRelease();
}

TEST_F(ArchiveTest, AFileStaysWhenItsWriterStopsHalfway) {
    const auto path = folder.Write("list.txt", "old");
    ASSERT_NE(Open(path, epiArchiveWrite), 0);
    Write("half");
    procs.Close(archive);
    ASSERT_NE(Open(path, epiArchiveWrite), 0);
    EXPECT_EQ(procs.Write(archive, nullptr, 4), 0);
    EXPECT_NE(procs.Flush(archive), 0);
    CloseAndRelease();
    EXPECT_EQ(Contents(path), "old");
    EXPECT_THAT(TakeMisuse(), ElementsAre(HasSubstr("without a flush"), HasSubstr("no buffer")));
}

TEST_F(ArchiveTest, TellsTheFrontEndWhatCannotBeOpenedOrWritten) {
    Listener listener;
    SetFrontEnd(&listener);
    const auto path = folder.Write("list.txt", "abc");
    using Row = std::tuple<std::filesystem::path, std::int32_t, const char*>;
    for (const auto& [place, mode, reason] :
         { Row { folder.Path() / "none", epiArchiveRead, "No such file" },
           Row { folder.Path(), epiArchiveRead, "Is a directory" },
           Row { folder.Path(), epiArchiveWrite, "Is a directory" },
           Row { folder.Path() / "none/a.txt", epiArchiveWrite, "No such file" },
           Row { path / "a.txt", epiArchiveWrite, "Not a directory" },
           Row { path, 3, "mode 3" } }) {
        EXPECT_EQ(Open(place, mode), 0) << place << " in mode " << mode;
        EXPECT_THAT(listener.heard, AllOf(HasSubstr(place.string()), HasSubstr(reason)));
        procs.Close(archive);
    }
    FSSpec endless;
    std::memset(endless.path, 'x', sizeof endless.path);
    EXPECT_EQ(procs.Open(archive, &endless, kText, epiArchiveRead), 0);
    EXPECT_THAT(TakeMisuse(), ElementsAre(HasSubstr("without a path")));

    // Every write to that device finds the disk full.
    ASSERT_NE(Open("/dev/full", epiArchiveWrite), 0);
    EXPECT_EQ(Write("abc"), 3);
    EXPECT_NE(procs.Flush(archive), 0);
    EXPECT_THAT(listener.heard, AllOf(HasSubstr("/dev/full"), HasSubstr("No space left")));
    SetFrontEnd(nullptr);
    CloseAndRelease();
}

TEST_F(ArchiveTest, NotesEveryCallOutOfTurn) {
    ASSERT_NE(Open(folder.Write("list.txt", "abc"), epiArchiveRead), 0);
    EXPECT_EQ(Write("x"), 0);
    EXPECT_NE(procs.Flush(archive), 0);
    EXPECT_EQ(Open(folder.Path() / "list.txt", epiArchiveRead), 0);
    procs.Close(archive);
    CloseAndRelease();
    ObjectTable().Release(archive, epiObjectArchive);
    EXPECT_EQ(procs.Length(archive), 0);
    Archive own; // of the host
    own.OpenForWriting();
    procs.Close(own.Ref());
    EXPECT_TRUE(own.IsOpen());
    ObjectTable().Release(own.Ref(), epiObjectArchive);
    ObjectTable().Release(own.Ref(), epiObjectImage);
    EXPECT_THAT(TakeMisuse(),
                ElementsAre(HasSubstr("not open for writing"), HasSubstr("not open for writing"),
                            HasSubstr("is open"), HasSubstr("not open"), HasSubstr("has ended"),
                            HasSubstr("has ended"), HasSubstr("host owns"), HasSubstr("host owns"),
                            HasSubstr("of kind archive, not image")));
}

TEST(WholeFile, IsReadUpToItsLimitAndNoFurther) {
    const TemporaryFolder folder;
    const auto file = folder.Write("three", "abc");
    std::string why;
    EXPECT_EQ(ReadWholeFile(file, 3, why), (std::vector<std::uint8_t> { 'a', 'b', 'c' }));
    EXPECT_EQ(ReadWholeFile(file, 2, why), std::nullopt);
    EXPECT_EQ(why, file.string() + ": cannot be read: more than 2 bytes");
}

} // namespace
} // namespace host
