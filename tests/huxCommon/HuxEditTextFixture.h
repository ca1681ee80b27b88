// SPDX-License-Identifier: BSD-3-Clause
// A window with two edit fields, a record of what they tell it, and of the beeps.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "huxCommon/huxGUI/HuxEditText.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Window.h"
#include "support/ChainHandler.h"
#include "support/WindowRefs.h"

namespace test {

class HuxEditTextFixture : public testing::Test {
protected:
    void SetUp() override {
        using namespace platform;
        ASSERT_TRUE(window = Window::Create({ 100, 100, 300, 400 }));
        field = NewField<HuxEditText>(&edit, 70);
        other = NewField<HuxEditText>(&otherEdit, 71);
        commands.emplace(UIObject::TargetOf(window),
                         std::vector { EventTypeSpec { kEventClassCommand, kEventCommandProcess } },
                         [this](EventRef event) { return Take(event); });
        SetBeep([this] { log += "beep "; });
        test::At(window).Show();
        test::At(window).Widget().window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(test::At(window).Widget().window()));
        TakeLog(); // the focus has come to the first field
    }
    void TearDown() override {
        commands.reset();
        test::Dispose(window);
        platform::SetBeep(nullptr);
        Drain();
    }

    // A field of its own control, which ends it.
    template <class Field>
    Field* NewField(QLineEdit** widget, int id) {
        platform::Window& owner = *platform::Window::Find(window);
        *widget = new QLineEdit(&owner.Widget());
        (*widget)->setGeometry(10, 10, 190, 20);
        (*widget)->show();
        platform::Control* const control = platform::MakeControl(**widget, owner);
        control->id = platform::ControlID { 0x56454C4D, id };
        auto* const made = new Field;
        EXPECT_EQ(made->Attach(control->Ref()), platform::kNoErr);
        return made;
    }

    // What was posted comes with the loop.
    static void Drain() {
        while (platform::DeliverNextEvent())
            continue;
        QCoreApplication::processEvents();
        while (platform::DeliverNextEvent())
            continue;
    }
    // What was told since the last time, in order: the field's id (but for 70), a colon and the code.
    std::string TakeLog() {
        Drain();
        return std::exchange(log, {});
    }
    std::string TextOf(HuxEditText& from) const {
        HuxString text;
        return from.GetText(text, true) ? std::string(text.GetUTF8()) : "none";
    }
    std::string Text() const { return TextOf(*field); }

    // The focus without what it does to the value.
    void Focus(QLineEdit* on) {
        field->SetAutoCheck(false);
        on->setFocus();
        field->SetAutoCheck(true);
        Drain();
        log.clear();
    }
    // As a user: whatever was there is replaced.
    void Enter(const char* text) {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClicks(edit, text);
        Drain();
    }
    void Paste(const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        QTest::keySequence(edit, QKeySequence::Paste);
        Drain();
    }
    void Commit(const char* preedit, const char* text) {
        QInputMethodEvent composing(QString::fromUtf8(preedit), {});
        QCoreApplication::sendEvent(edit, &composing);
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromUtf8(text));
        QCoreApplication::sendEvent(edit, &commit);
        Drain();
    }

    platform::WindowRef window = nullptr;
    HuxEditText *field = nullptr, *other = nullptr; // each belongs to its control
    QLineEdit *edit = nullptr, *otherEdit = nullptr;
    std::string log;
    std::function<void(std::uint32_t commandID, long value)> onNotice;

private:
    platform::OSStatus Take(platform::EventRef event) {
        std::uint32_t commandID = 0;
        long value = 0;
        HuxCarbonEvent(event, true).GetCommandParameter(&commandID, &value, nullptr, nullptr);
        if (commandID != 70)
            log += std::to_string(commandID) + ":";
        log += std::to_string(value) + " ";
        if (onNotice)
            onNotice(commandID, value);
        return platform::kNoErr;
    }

    std::optional<ChainHandler> commands;
};

} // namespace test
