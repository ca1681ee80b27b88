// SPDX-License-Identifier: BSD-3-Clause
// Lists on their way through the reference host's archives into real files.
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "host/Ledger.h"
#include "host/Tables.h"
#include "popup/CTextPopup.h"
#include "support/TemporaryFolder.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;

// No file may grow beyond so many bytes while it lives, as on a disk that is nearly full.
class ScopedFileLimit {
public:
    explicit ScopedFileLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit { bytes, m_old.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ScopedFileLimit(const ScopedFileLimit&) = delete;
    ScopedFileLimit& operator=(const ScopedFileLimit&) = delete;
    ~ScopedFileLimit() {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_signal);
    }

private:
    rlimit m_old {};
    void (*m_signal)(int);
};

class HostFiles : public testing::Test, public host::FrontEnd {
protected:
    HostFiles() {
        host::Ledger::Get().ForgetMisuse();
        host::SetFrontEnd(this);
        record = host::MakeRecord();
    }
    ~HostFiles() override {
        host::SetFrontEnd(nullptr);
        EXPECT_EQ(host::Ledger::Get().Describe(), "");
    }
    void FileFailed(const std::string& why) override { heard = why; }

    std::int32_t Save(const std::filesystem::path& file) {
        return CTextPopup::SavePopupString(&record, Spec(file), list);
    }
    std::int32_t Open(const std::filesystem::path& file) {
        return CTextPopup::OpenPopupString(&record, Spec(file), list);
    }
    const FSSpec* Spec(const std::filesystem::path& file) {
        std::strcpy(m_spec.path, file.c_str());
        return &m_spec;
    }
    static std::string Contents(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }

    TemporaryFolder folder;
    _EPIRECORD record;
    char list[20][64] = { "PAN", "FOLLOW" };
    std::string heard;

private:
    FSSpec m_spec {};
};

TEST_F(HostFiles, AListComesBackFromItsFile) {
    const auto file = folder.Write("list.txt", "a longer file than the new one");
    EXPECT_EQ(Save(file), 1);
    EXPECT_EQ(Contents(file), "PAN\rFOLLOW\r");
    std::strcpy(list[0], "WIPE");
    EXPECT_EQ(Open(file), 1);
    EXPECT_STREQ(list[0], "PAN");
    EXPECT_EQ(heard, "");
}

TEST_F(HostFiles, AFullDiskKeepsTheOldFileAndIsTold) {
    const auto file = folder.Write("list.txt", "old\r");
    {
        const ScopedFileLimit limit(8);
        EXPECT_EQ(Save(file), 0);
    }
    EXPECT_EQ(Contents(file), "old\r");
    EXPECT_THAT(heard, AllOf(HasSubstr(file.string()), HasSubstr("File too large")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
    EXPECT_EQ(Save("/dev/full"), 0);
    EXPECT_THAT(heard, HasSubstr("No space left"));
}

TEST_F(HostFiles, APlaceThatTakesNoFileIsTold) {
    for (const auto& file : { folder.Path(), folder.Path() / "no" / "list.txt" }) {
        heard.clear();
        EXPECT_EQ(Save(file), 0);
        EXPECT_THAT(heard, HasSubstr(file.string()));
        EXPECT_EQ(Open(file), 0);
        EXPECT_STREQ(list[0], "");
    }
}

} // namespace
