// SPDX-License-Identifier: BSD-3-Clause
// The application that is made for a host without one.
#include <cstdlib>
#include <iostream>

#include <QDialogButtonBox>
#include <QPushButton>
#include <gmock/gmock.h>

#include "platform/ui/UIObject.h"

namespace {

// Says what Qt's own Cancel button reads for a user of these languages, and ends the process: there is
// one application in each.
[[noreturn]] void SayCancel(const char* languages) {
    setenv("LC_ALL", "C", 1);
    setenv("LANGUAGE", languages, 1);
    if (platform::EnsureUserInterface()) {
        const QDialogButtonBox box(QDialogButtonBox::Cancel);
        std::cerr << box.button(QDialogButtonBox::Cancel)->text().toStdString() << std::endl;
    }
    std::_Exit(0);
}

TEST(ApplicationTest, QtSpeaksTheUsersLanguage) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    struct Row {
        const char* languages;
        const char* cancel;
    };
    for (const Row& row : { Row { "ja", "キャンセル" }, Row { "ja_JP.UTF-8:en", "キャンセル" },
                            Row { "xx:ja", "キャンセル" }, Row { "en:ja", "Cancel" },
                            Row { "C", "Cancel" }, Row { "../ja", "Cancel" } }) {
        EXPECT_EXIT(SayCancel(row.languages), testing::ExitedWithCode(0), row.cancel)
            << row.languages;
    }
}

} // namespace
