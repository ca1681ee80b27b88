// SPDX-License-Identifier: BSD-3-Clause
// Tracks by hand: in the list, in the fields, in the frame, and through the clipboard.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>
#include <gmock/gmock.h>

#include "apps/studio/FrameView.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/StudioFixture.h"
#include "apps/studio/TrackList.h"
#include "apps/studio/TracksPanel.h"

namespace studio {

namespace {

class WindowTracksTest : public StudioTest {
protected:
    WindowTracksTest() {
        // Two texts far from each other and from every edge, in frames of 320 by 180.
        OpenShot(2);
        Edit([](auto& params) {
            params.dwFlags = TEXT_BOX | TEXT_INFO;
            params.nFontSize = 20;
            params.szInfoText[0] = 'A';
            params.ptPos = { 50, 30 };
        });
        Window().Action("duplicateTrack")->trigger();
        Edit([](auto& params) {
            params.szInfoText[0] = 'B';
            params.ptPos = { 190, 111 };
        });
        Window().View().SetScale(2);
        EXPECT_TRUE(Settle());
    }

    const std::vector<host::Track>& Tracks() { return Project().Committed().tracks; }
    std::string Names() {
        std::string names;
        for (const auto& track : Tracks())
            names += track.settings.szInfoText;
        return names;
    }
    tagPOINT PlaceOf(std::size_t track) { return Tracks()[track].settings.ptPos; }
    QString UndoText() { return Project().Undo().undoText(); }
    void Undo() { QTest::keySequence(&Window(), QKeySequence::Undo); }

    // Of the widget, for a point of the frame; the frame stands in its middle, twice as large.
    QPoint InView(QPoint point) {
        return Window().View().rect().center() + 2 * (point - QPoint(160, 90)) + QPoint(1, 1);
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = Qt::NoModifier,
              const std::function<void()>& before = {}) {
        auto* const view = &Window().View();
        QTest::mousePress(view, Qt::LeftButton, {}, InView(from));
        for (const auto& point : { (from + to) / 2, to })
            MoveHeld(*view, InView(point), keys);
        if (before)
            before();
        QTest::mouseRelease(view, Qt::LeftButton, keys, InView(to));
        EXPECT_TRUE(Settle());
    }
    static void MoveHeld(QWidget& widget, QPoint point, Qt::KeyboardModifiers keys = {}) {
        QMouseEvent event(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton,
                          Qt::LeftButton, keys);
        QApplication::sendEvent(&widget, &event);
    }
    QPoint InRow(int row, int column) {
        auto& list = Window().Tracks().List();
        return list.visualRect(list.model()->index(row, column)).center();
    }
    void ClickRow(int row, int column) {
        QTest::mouseClick(Window().Tracks().List().viewport(), Qt::LeftButton, {},
                          InRow(row, column));
    }
};

TEST_F(WindowTracksTest, TheListShowsTheTopFirstAndDoesWhatRowsAreFor) {
    auto& list = Window().Tracks().List();
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(0)->text(2), "B");
    const auto both = Window().View().Picture();
    ClickRow(0, 0);
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Tracks()[1].isShown);
    EXPECT_NE(Window().View().Picture(), both);
    EXPECT_EQ(UndoText(), "Hide Track");
    ClickRow(1, 1);
    EXPECT_TRUE(Tracks()[0].isLocked);
    // The panel is that of the selected track.
    EXPECT_EQ(Project().LiveParams().szInfoText[0], 'A');
    EXPECT_FALSE(Window().Plugin().isEnabled());
    Undo();
    Undo();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Window().View().Picture(), both);

    ClickRow(1, 2);
    QTest::keyClick(&list, Qt::Key_F2);
    auto* const field = list.findChild<QLineEdit*>();
    ASSERT_TRUE(field);
    QTest::keyClicks(field, "Name");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(WaitUntil([&] { return Tracks()[0].name == "Name"; }));
    // The upper row goes under the lower one.
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, InRow(0, 2));
    MoveHeld(*list.viewport(), InRow(1, 2) - QPoint(0, 2));
    MoveHeld(*list.viewport(), InRow(1, 2) + QPoint(0, 5));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, InRow(1, 2) + QPoint(0, 5));
    EXPECT_EQ(Names(), "BA");
    EXPECT_EQ(UndoText(), "Reorder Tracks");
    EXPECT_EQ(Project().LiveParams().szInfoText[0], 'B');
    Undo();
    EXPECT_EQ(Names(), "AB");
}

TEST_F(WindowTracksTest, ATextIsTakenByAClickAndMovedByMouseAndKeys) {
    auto* const view = &Window().View();
    struct Row {
        QPoint by;
        Qt::KeyboardModifiers keys;
        tagPOINT place; // of B, whose box is a little taller than 20 pixels
    };
    for (const auto& row : {
             Row { { 20, -13 }, {}, { 210, 98 } },
             Row { { 20, -3 }, Qt::ShiftModifier, { 210, 111 } },
             // The left edge of A, and three pixels from it, where it does not snap.
             Row { { -138, 0 }, {}, { 50, 111 } },
             Row { { -138, 0 }, Qt::ControlModifier, { 52, 111 } },
         }) {
        Drag({ 193, 116 }, QPoint(193, 116) + row.by, row.keys);
        EXPECT_EQ(Project().Committed().selected, 1U);
        EXPECT_EQ(PlaceOf(1).x, row.place.x) << row.by.x();
        EXPECT_EQ(PlaceOf(1).y, row.place.y) << row.by.x();
        EXPECT_EQ(UndoText(), "Move Text");
        Undo();
        ASSERT_TRUE(Settle());
        EXPECT_EQ(PlaceOf(1).x, 190);
    }
    const auto before = view->Picture();
    Drag({ 193, 116 }, { 233, 90 }, {}, [&] {
        EXPECT_TRUE(WaitUntil([&] { return view->Picture() != before; }));
        QTest::keyClick(view, Qt::Key_Escape);
    });
    EXPECT_EQ(view->Picture(), before);

    QTest::mouseClick(view, Qt::LeftButton, {}, InView({ 53, 36 }));
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(PlaceOf(0).x, 51);
    EXPECT_EQ(PlaceOf(0).y, 40);
    Undo(); // both at once
    EXPECT_EQ(PlaceOf(0).x, 50);
    // Beside the texts the arrows step through the frames again.
    QTest::mouseClick(view, Qt::LeftButton, {}, InView({ 300, 20 }));
    QTest::keyClick(view, Qt::Key_Right);
    EXPECT_EQ(Project().Current(), 1U);
    EXPECT_EQ(PlaceOf(0).x, 50);

    Window().Action("lock")->trigger();
    ASSERT_TRUE(Settle());
    Drag({ 53, 36 }, { 93, 60 });
    EXPECT_EQ(PlaceOf(0).x, 50);
}

TEST_F(WindowTracksTest, ADoubleClickOpensTheEditorOfThatText) {
    bool isSeen = false;
    QTimer timer;
    timer.callOnTimeout([&] {
        auto* const editor = QApplication::activeModalWidget();
        if (!editor || std::exchange(isSeen, true))
            return;
        Click(*editor, "Cancel");
    });
    timer.start(0);
    ClickRow(1, 2);
    QTest::mouseClick(&Window().View(), Qt::LeftButton, {}, InView({ 193, 116 }));
    QTest::mouseDClick(&Window().View(), Qt::LeftButton, {}, InView({ 193, 116 }));
    EXPECT_TRUE(WaitUntil([&] { return isSeen && !Window().Plugin().IsModal(); }));
    EXPECT_EQ(Project().Committed().selected, 1U);
}

TEST_F(WindowTracksTest, FieldsAnchorATextAndLetItGoWhereItStands) {
    const auto choices = Window().Tracks().findChildren<QComboBox*>();
    const auto numbers = Window().Tracks().findChildren<QAbstractSpinBox*>();
    ASSERT_EQ(choices.size(), 2);
    ASSERT_EQ(numbers.size(), 4); // x, y, size, height
    EXPECT_FALSE(choices[1]->isEnabled());
    choices[0]->setFocus();
    QTest::keyClick(choices[0], Qt::Key_End); // bottom right
    ASSERT_TRUE(Settle());
    const auto type = [&](int field, const char* text) {
        numbers[field]->setFocus();
        numbers[field]->selectAll();
        QTest::keyClicks(numbers[field], text);
        QTest::keyClick(numbers[field], Qt::Key_Return);
        ASSERT_TRUE(Settle());
    };
    type(0, "5%");
    type(1, "7");
    const auto& anchor = Tracks()[1].anchor;
    EXPECT_EQ(anchor.place, host::AnchorPlace::kBottomRight);
    EXPECT_EQ(anchor.x, (host::Margin { 5, true }));
    EXPECT_EQ(anchor.y, (host::Margin { 7, false }));
    EXPECT_EQ(UndoText(), "Change Place");
    // To the left by 10 pixels, which is inwards.
    const auto place = Window().Tracks().SelectedPlace();
    ASSERT_TRUE(place);
    EXPECT_EQ(place->right, 320 - 16);
    EXPECT_EQ(place->bottom, 180 - 7);
    Drag({ place->left + 3, place->top + 3 }, { place->left - 29, place->top + 3 },
         Qt::ControlModifier);
    EXPECT_EQ(Tracks()[1].anchor.x, (host::Margin { 15, true }));
    const auto picture = Window().View().Picture();
    choices[0]->setFocus();
    QTest::keyClick(choices[0], Qt::Key_Home);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Tracks()[1].anchor.place, host::AnchorPlace::kNone);
    EXPECT_EQ(PlaceOf(1).x, place->left - 32);
    EXPECT_EQ(Window().View().Picture(), picture);
    // Half as large where the frame is half as high.
    type(2, "40");
    type(3, "360");
    EXPECT_EQ(Tracks()[1].settings.nFontSize, 40);
    EXPECT_EQ(Tracks()[1].referenceHeight, 360);
    EXPECT_EQ(UndoText(), "Change Size");
}

TEST_F(WindowTracksTest, TracksGoThroughTheClipboardToAnotherWindow) {
    Window().View().setFocus();
    Window().Action("selectAll")->trigger();
    Window().Action("copy")->trigger();
    Window().Action("cut")->trigger();
    EXPECT_EQ(Names(), ""); // one without a text stays
    EXPECT_EQ(UndoText(), "Cut Track");
    Undo();
    EXPECT_EQ(Names(), "AB");
    NewWindow();
    Window().View().setFocus();
    Window().Action("paste")->trigger();
    EXPECT_EQ(Names(), "AB");
    EXPECT_EQ(Tracks().size(), 3U);
    EXPECT_EQ(UndoText(), "Paste Tracks");
    Window().Action("lock")->trigger();
    QTest::keyClick(&Window().View(), Qt::Key_Delete);
    EXPECT_EQ(Tracks().size(), 3U);
    EXPECT_THAT(Message(), testing::HasSubstr("Unlock it first"));
    Window().Action("lock")->trigger();
    QTest::keyClick(&Window().View(), Qt::Key_Delete);
    EXPECT_EQ(Names(), "A");

    QApplication::clipboard()->setText("a shopping list");
    Window().Action("paste")->trigger();
    EXPECT_EQ(Tracks().size(), 2U);
    EXPECT_THAT(Message(), testing::HasSubstr("cannot be pasted as tracks.\nit holds no tracks"));
    // A field that has the keyboard gets what is pasted.
    auto* const field = Window().Strings().findChild<QLineEdit*>();
    field->setFocus();
    Window().Action("selectAll")->trigger();
    Window().Action("paste")->trigger();
    EXPECT_EQ(field->text(), "a shopping list");
}

} // namespace

} // namespace studio
