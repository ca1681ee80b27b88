// SPDX-License-Identifier: BSD-3-Clause
// List views: rows by asking, selection, editing in place.
#include <map>
#include <utility>

#include <QApplication>
#include <QInputMethodEvent>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>

#include "platform/ui/ControlsFixture.h"
#include "platform/ui/DataBrowser.h"
#include "platform/ui/lists/ListView.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Items = std::vector<DataBrowserItemID>;

constexpr DataBrowserPropertyID kName = 0x4E616D65;
constexpr DataBrowserItemID kRefused = 9; // takes no text
constexpr DataBrowserItemID kFixed = 8;   // cannot be edited
constexpr DataBrowserItemID kDeadly = 7;  // disposes of the window when it is renamed

// Callbacks are plain functions, so what they work on is the test's that runs.
std::map<DataBrowserItemID, std::string> names;
std::vector<std::pair<DataBrowserItemID, DataBrowserItemNotification>> told;

OSStatus Data(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
              DataBrowserItemDataRef data, bool set) {
    if (property == kDataBrowserItemIsEditableProperty)
        data->boolean = item != kFixed;
    else if (property != kName || item == kRefused)
        return kParamErr;
    else if (!set)
        data->text = names[item];
    else
        names[item] = data->text;
    if (set && item == kDeadly)
        test::Dispose(Control::Find(browser)->OwnerRef());
    return kNoErr;
}

void Note(ControlRef, DataBrowserItemID item, DataBrowserItemNotification message) {
    told.emplace_back(item, message);
}

class DataBrowserTest : public test::ControlsFixture {
protected:
    void SetUp() override {
        names.clear();
        told.clear();
        ControlsFixture::SetUp();
        list = MakeCustom("ListView");
        view = static_cast<ListView*>(WidgetOf(list));
        view->resize(200, 200);
        List().SetSource(kName, { Data, Note });
    }
    void Add(const Items& items) {
        for (const DataBrowserItemID item : items)
            names[item] = "Item " + std::to_string(item);
        ASSERT_EQ(List().AddItems(items), kNoErr);
        told.clear();
    }
    void Show() {
        test::At(window).Show();
        widget->activateWindow();
        view->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
    }
    DataBrowser& List() { return *DataBrowser::Find(list); }
    QString Shown(int row) const { return view->model()->index(row, 0).data().toString(); }
    void Type(const char* text) {
        view->Editor()->selectAll();
        QTest::keyClicks(view->Editor(), QString::fromLatin1(text));
    }

    ControlRef list = nullptr;
    ListView* view = nullptr;
};

TEST_F(DataBrowserTest, RowsAndTheSelectionAreToldAndGivenInTheirOrder) {
    Add({ 3, 1, 2 });
    EXPECT_EQ(List().AddItems(Items { 4, 1 }), kParamErr) << "1 is there";
    EXPECT_EQ(List().AddItems(Items { kDataBrowserNoItem }), kParamErr);
    EXPECT_THAT(List().AllItems(), ElementsAre(3, 1, 2));
    EXPECT_EQ(Shown(0), "Item 3");
    List().SelectItems(Items { 2, 3 });
    EXPECT_THAT(List().SelectedItems(), ElementsAre(3, 2));
    told.clear();
    List().SelectItems(Items { 1 });
    EXPECT_THAT(told, testing::UnorderedElementsAre(Pair(3, kDataBrowserItemDeselected),
                                                    Pair(2, kDataBrowserItemDeselected),
                                                    Pair(1, kDataBrowserItemSelected)));
    told.clear();
    EXPECT_EQ(List().RemoveItems(Items { 3, 5 }), kParamErr) << "5 is not there";
    EXPECT_EQ(List().RevealItem(3), kParamErr);
    List().RemoveItems(List().AllItems());
    EXPECT_THAT(told,
                ElementsAre(Pair(3, kDataBrowserItemRemoved), Pair(1, kDataBrowserItemDeselected),
                            Pair(1, kDataBrowserItemRemoved), Pair(2, kDataBrowserItemRemoved)));
    EXPECT_THAT(List().SelectedItems(), IsEmpty());
}

TEST_F(DataBrowserTest, TheKeysOfAnEditorEndTheEditingAndPressNoButton) {
    const ControlRef button = Make<QPushButton>();
    int presses = 0;
    const test::ChainHandler counter(On(button).Target(), { test::kHit }, [&](EventRef) {
        ++presses;
        return kNoErr;
    });
    test::At(window).SetDefaultButton(Control::Find(button));
    test::At(window).SetCancelButton(Control::Find(button));
    Add({ 1, 2 });
    List().SelectItems(Items { 2 });
    Show();
    struct Row {
        Qt::Key key;
        const char* name;
    };
    for (const Row& row : { Row { Qt::Key_Escape, "Item 2" }, Row { Qt::Key_Return, "abc" } }) {
        told.clear();
        QTest::keyClick(view, Qt::Key_F2);
        ASSERT_EQ(List().EditedItem(), 2U);
        Type("abc");
        QTest::keyClick(view->Editor(), row.key);
        QApplication::processEvents();
        EXPECT_EQ(List().EditedItem(), kDataBrowserNoItem) << row.key;
        EXPECT_EQ(names[2], row.name) << row.key;
        EXPECT_EQ(Shown(1), row.name) << row.key;
        EXPECT_EQ(presses, 0) << row.key;
        EXPECT_THAT(
            told, ElementsAre(Pair(2, kDataBrowserEditStarted), Pair(2, kDataBrowserEditStopped)));
    }
    QTest::keyClick(view, Qt::Key_Return);
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(presses, 2) << "without an editor they are the window's";
}

TEST_F(DataBrowserTest, AnInputMethodComposesInTheEditor) {
    Add({ 1 });
    Show();
    ASSERT_EQ(List().EditItem(1), kNoErr);
    view->Editor()->selectAll();
    QInputMethodEvent composing(QStringLiteral("かめら"), {});
    QApplication::sendEvent(view->Editor(), &composing);
    EXPECT_EQ(names[1], "Item 1") << "nothing is given back while it is composed";
    QInputMethodEvent committing;
    committing.setCommitString(QStringLiteral("カメラ"));
    QApplication::sendEvent(view->Editor(), &committing);
    EXPECT_EQ(List().EditItem(kDataBrowserNoItem), kNoErr);
    EXPECT_EQ(names[1], "カメラ");
}

TEST_F(DataBrowserTest, EditingByCall) {
    Add({ 1, 2, kFixed, kRefused });
    Show();
    EXPECT_EQ(List().EditItem(kFixed), kParamErr);
    EXPECT_EQ(List().EditItem(77), kParamErr);
    EXPECT_EQ(List().EditItem(2), kNoErr);
    EXPECT_THAT(List().SelectedItems(), ElementsAre(2));
    Type("kept");
    EXPECT_EQ(List().EditItem(1), kNoErr);
    EXPECT_EQ(names[2], "kept") << "another row's editor ends the first with its text";
    EXPECT_EQ(List().EditedItem(), 1U);
    Type("dropped");
    told.clear();
    List().RemoveItems(Items { 1 });
    EXPECT_EQ(names[1], "Item 1");
    EXPECT_EQ(List().EditedItem(), kDataBrowserNoItem);
    EXPECT_THAT(told, testing::Contains(Pair(1, kDataBrowserEditStopped)).Times(1));
    EXPECT_EQ(told.back(), std::pair(DataBrowserItemID { 1 }, kDataBrowserItemRemoved));

    EXPECT_EQ(List().EditItem(kRefused), kNoErr);
    Type("no");
    List().EditItem(kDataBrowserNoItem);
    EXPECT_EQ(names[kRefused], "Item 9");
}

TEST_F(DataBrowserTest, EditCommandsWorkOnTheEditor) {
    Add({ 1, 2 });
    Show();
    Control* const control = Control::Find(list);
    EXPECT_FALSE(control->DoEditCommand(kHICommandCut));
    EXPECT_TRUE(control->DoEditCommand(kHICommandSelectAll));
    EXPECT_THAT(List().SelectedItems(), ElementsAre(1, 2));
    List().EditItem(1);
    Type("x");
    EXPECT_TRUE(control->DoEditCommand(kHICommandSelectAll));
    EXPECT_TRUE(control->DoEditCommand(kHICommandClear));
    EXPECT_EQ(view->Editor()->text(), "");
    EXPECT_TRUE(control->DoEditCommand(kHICommandUndo));
    EXPECT_EQ(view->Editor()->text(), "x");
}

TEST_F(DataBrowserTest, ARenameMayDisposeOfTheWindow) {
    Add({ kDeadly });
    Show();
    List().EditItem(kDeadly);
    Type("last");
    QTest::keyClick(view->Editor(), Qt::Key_Return);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    widget = nullptr; // is gone
    EXPECT_EQ(names[kDeadly], "last");
    EXPECT_EQ(DataBrowser::Find(list), nullptr);
}

} // namespace
} // namespace platform
