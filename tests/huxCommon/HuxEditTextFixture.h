// SPDX-License-Identifier: BSD-3-Clause
// A window with two edit fields, steppers where wanted, and a record of what they tell it and of beeps.
#pragma once

#include <optional>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "huxCommon/huxGUI/HuxEditText.h"
#include "platform/ui/UIFixture.h"

namespace test {

class HuxEditTextFixture : public UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        field = NewField<HuxEditText>(&edit, 70);
        other = NewField<HuxEditText>(&otherEdit, 71);
        m_commands.emplace(test::At(window).Target(), std::vector { kCommand },
                           [this](platform::EventRef event) { return Take(event); });
        platform::SetBeep([this] { log += "beep "; });
        Activate(window);
        TakeLog(); // the focus has come to the first field
    }
    void TearDown() override {
        m_commands.reset();
        UIFixture::TearDown();
        platform::SetBeep(nullptr);
        Drain();
    }

    // A field of its own control, which ends it.
    template <class Field>
    Field* NewField(QLineEdit** line, int id) {
        *line = new QLineEdit(widget);
        auto* const made = new Field;
        const platform::ControlRef control = Make(*line);
        On(control).id = platform::ControlID { 0x56454C4D, id };
        EXPECT_EQ(made->Attach(control), platform::kNoErr);
        return made;
    }
    // A stepper with the command 5, which ends with its control.
    template <class Arrows>
    Arrows* NewArrows() {
        const platform::ControlRef control = MakeCustom("Stepper");
        On(control).commandID = 5;
        m_stepper = WidgetOf(control);
        auto* const made = new Arrows;
        EXPECT_EQ(made->Attach(control), platform::kNoErr);
        return made;
    }
    void Up() { QTest::keyClick(m_stepper, Qt::Key_Up); }
    void Down() { QTest::keyClick(m_stepper, Qt::Key_Down); }

    // What was told since the last time, in order: the field's id (but for 70), a colon and the code.
    std::string TakeLog() {
        Drain();
        return std::exchange(log, {});
    }
    static std::string TextOf(HuxEditText& from) {
        HuxString text;
        return from.GetText(text, true) ? std::string(text.GetUTF8()) : "none";
    }
    std::string Text() const { return TextOf(*field); }

    // The focus without what it does to the value.
    void Focus(QLineEdit* on) {
        field->SetAutoCheck(false);
        on->setFocus();
        field->SetAutoCheck(true);
        TakeLog();
    }
    // As a user: whatever was there is replaced.
    void Enter(const char* text) {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClicks(edit, text);
        Drain();
    }
    void Paste(const char* text) {
        PasteInto(*edit, text);
        Drain();
    }

    HuxEditText *field = nullptr, *other = nullptr; // each belongs to its control
    QLineEdit *edit = nullptr, *otherEdit = nullptr;
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

    std::optional<ChainHandler> m_commands;
    QWidget* m_stepper = nullptr;
};

} // namespace test
