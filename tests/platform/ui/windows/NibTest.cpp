// SPDX-License-Identifier: BSD-3-Clause
#include <QComboBox>
#include <QDialog>
#include <QLabel>

#include "platform/ui/UIFixture.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace platform {
namespace {

constexpr const char* kForm = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>Edit</class><widget class="QDialog" name="Edit">
<property name="geometry"><rect><x>0</x><y>0</y><width>300</width><height>200</height></rect></property>
<property name="windowTitle"><string>IDS_TITLE</string></property>
<widget class="QLabel" name="caption">
 <property name="text"><string>&amp;Name IDS_TITLE</string></property>
 <property name="buddy"><cstring>second</cstring></property></widget>
<widget class="QLineEdit" name="first">
 <property name="toolTip"><string>IDS_TIP</string></property>
 <property name="controlID" stdset="0"><number>102</number></property></widget>
<widget class="QLineEdit" name="second">
 <property name="controlID" stdset="0"><number>103</number></property>
 <property name="controlSignature" stdset="0"><string>ABCD</string></property>
 <property name="commandID" stdset="0"><number>103</number></property></widget>
<widget class="QComboBox" name="plain">
 <item><property name="text"><string>IDS_MISSING</string></property></item>
 <item><property name="text"><string>IDS_TIP</string></property></item></widget>
</widget></ui>)";

class NibTest : public test::UIFixture {
protected:
    NibTest() {
        m_folder.Write("T.bundle/Contents/Info.json",
                       R"({"identifier": "org.telop.test.nib", "name": "T", "version": "1"})");
        const std::string resources = "T.bundle/Contents/Resources/";
        m_folder.Write(resources + "en.lproj/Localizable.strings",
                       "\"IDS_TITLE\" = \"Text & <Box>\";\n\"IDS_TIP\" = \"A tip\";\n");
        m_folder.Write(resources + "Forms.nib/Edit.ui", kForm);
        m_folder.Write(resources + "Forms.nib/Broken.ui", std::string(kForm).substr(0, 900));
        m_folder.Write(resources + "Forms.nib/Empty.ui", "");
        m_folder.Write(resources + "Forms.nib/Other.ui", "<html><body/></html>");
        m_bundle = CFBundleCreate(m_folder.Path() / "T.bundle");
    }
    ~NibTest() override { CFRelease(m_bundle); }

    Control* Get(std::int32_t id, OSType signature = 0x56454C4D) const {
        return Control::FindByID(window, { signature, id });
    }

    ScopedEnvironment m_language { "LANGUAGE", "en" };
    TemporaryFolder m_folder;
    CFBundleRef m_bundle = nullptr;
};

TEST_F(NibTest, MakesAWindowWithItsControlsAndTexts) {
    test::Dispose(window);
    ASSERT_EQ(CreateWindowFromNib(m_bundle, "Forms", "Edit", &window), kNoErr);
    widget = &Widget(window);
    EXPECT_FALSE(test::At(window).IsVisible());
    EXPECT_FALSE(qobject_cast<QDialog*>(widget));
    EXPECT_EQ(widget->size(), QSize(300, 200));
    EXPECT_EQ(widget->windowTitle(), "Text & <Box>");
    const auto& caption = *widget->findChild<QLabel*>("caption");
    EXPECT_EQ(caption.text(), "&Name IDS_TITLE");
    EXPECT_EQ(widget->findChild<QComboBox*>()->itemText(0), "IDS_MISSING");
    EXPECT_EQ(widget->findChild<QComboBox*>()->itemText(1), "A tip");
    const Control *const first = Get(102), *const second = Get(103, 0x41424344);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->Widget().toolTip(), "A tip");
    EXPECT_EQ(caption.buddy(), &second->Widget());
    EXPECT_EQ(second->commandID, 103U);
    test::Dispose(window);
}

TEST_F(NibTest, WhatCannotBeMadeGivesAStatusAndLeavesNothing) {
    struct Row {
        const char* nib;
        const char* window;
        OSStatus status;
    };
    const auto widgets = QApplication::allWidgets().size();
    for (const Row& row :
         { Row { "Missing", "Edit", kErrCantFindNib },
           Row { "Forms", "Missing", kErrCantFindWindow }, Row { "Forms", "Broken", kErrNibBroken },
           Row { "Forms", "Empty", kErrNibBroken }, Row { "Forms", "Other", kErrNibBroken } }) {
        window = reinterpret_cast<WindowRef>(std::intptr_t { 7 });
        EXPECT_EQ(CreateWindowFromNib(m_bundle, row.nib, row.window, &window), row.status)
            << row.window;
        EXPECT_EQ(window, nullptr) << row.window;
        EXPECT_EQ(QApplication::allWidgets().size(), widgets) << row.window;
    }
}

} // namespace
} // namespace platform
