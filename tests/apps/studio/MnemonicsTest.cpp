// SPDX-License-Identifier: BSD-3-Clause
// A key with Alt that two things claim works for neither.
#include <map>

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <gtest/gtest.h>

#include "apps/studio/ExportDialog.h"
#include "apps/studio/StudioFixture.h"

namespace studio {

namespace {

class MnemonicsTest : public StudioTest {
protected:
    void Add(const QString& text) {
        auto const key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty())
            return;
        EXPECT_TRUE(m_texts.try_emplace(key, text).second)
            << key.toStdString() << ": " << m_texts[key].toStdString() << ", "
            << text.toStdString();
    }
    void AddAllOf(const QWidget& window) {
        for (auto const* const label : window.findChildren<QLabel*>()) {
            if (label->buddy())
                Add(label->text());
        }
        for (auto const* const button : window.findChildren<QAbstractButton*>())
            Add(button->text());
    }

    std::map<QString, QString> m_texts;
};

TEST_F(MnemonicsTest, AreClaimedOnceInTheWindow) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 2)));
    ASSERT_TRUE(Settle());
    AddAllOf(Window());
    for (auto const* const menu : Window().menuBar()->actions())
        Add(menu->text());
    EXPECT_TRUE(m_texts.contains("Alt+D")) << "the plug-in's button is not there";
}

TEST_F(MnemonicsTest, AreClaimedOnceInTheExportDialog) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 2)));
    AddAllOf(ExportDialog(*Window().TheProject().TheShot(), {}, nullptr));
    EXPECT_GE(m_texts.size(), 5U);
}

} // namespace

} // namespace studio
