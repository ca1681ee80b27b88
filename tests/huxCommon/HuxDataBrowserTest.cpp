// SPDX-License-Identifier: BSD-3-Clause
// Lists: rows by asking the window, selection, editing in place.
#include "huxCommon/huxGUI/HuxDataBrowser.h"

#include <QLineEdit>

#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/UIFixture.h"
#include "platform/ui/lists/ListView.h"

using namespace platform;

namespace {

using testing::ElementsAre;
using testing::Pair;
using Items = std::vector<DataBrowserItemID>;

constexpr DataBrowserPropertyID kName = 0x4E616D65;
constexpr ControlID kID { kHuxPropertyCreator, 201 };

struct Row : HuxDataBrowserItemData {
    Row(std::string name, int& alive) : name(std::move(name)), alive(++alive) {}
    ~Row() override { --alive; }

    std::string name;
    int& alive;
};

class HuxDataBrowserTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        list = MakeCustom("ListView");
        On(list).id = kID;
        view = dynamic_cast<ListView*>(WidgetOf(list));
        view->resize(200, 200);
        browser.Attach(list);
        EXPECT_EQ(browser.InstallCallbacks(kName), kNoErr);
        answers.emplace(test::At(window).Target(),
                        std::vector<EventTypeSpec> {
                            { kHuxEventClassDataBrowser, kHuxEventDataBrowserItemData },
                            { kHuxEventClassDataBrowser, kHuxEventDataBrowserNotification } },
                        [this](EventRef event) { return Answer(event); });
        for (const char* name : { "one", "two", "three" })
            Add(name);
        Activate(window);
        view->setFocus();
        told.clear();
    }
    void TearDown() override {
        test::Dispose(window);
        EXPECT_EQ(rowsAlive, 0);
        answers.reset();
        UIFixture::TearDown();
    }
    Row* Add(const char* name) {
        return static_cast<Row*>(browser.AddItem(std::make_unique<Row>(name, rowsAlive)));
    }
    OSStatus Answer(EventRef event) {
        HuxDataBrowser::ItemDataRequest asked;
        HuxDataBrowser::ItemNotification note;
        if (HuxDataBrowser::ReadNotification(event, &note))
            told.emplace_back(note.item, note.message);
        if (!HuxDataBrowser::ReadItemData(event, &asked) || !asked.row)
            return kEventNotHandledErr;
        EXPECT_EQ(asked.id, kID);
        if (throws)
            throw std::bad_alloc();
        std::string& name = static_cast<Row*>(asked.row)->name;
        if (asked.property == kDataBrowserItemIsEditableProperty)
            asked.itemData->boolean = name != "fixed";
        else if (!asked.setValue)
            asked.itemData->text = name;
        else if (name == "refused")
            return kParamErr;
        else if (name == "deadly")
            test::Dispose(window);
        else
            name = asked.itemData->text;
        return kNoErr;
    }
    DataBrowser& List() const { return *DataBrowser::Find(list); }
    Row& At(DataBrowserItemID item) const { return *static_cast<Row*>(browser.GetItem(item)); }
    // The texts that the view shows.
    std::vector<std::string> Shown() const {
        std::vector<std::string> texts;
        for (int i = 0; i < view->model()->rowCount(); ++i)
            texts.push_back(view->model()->index(i, 0).data().toString().toStdString());
        return texts;
    }
    void Type(const char* text) {
        view->Editor()->selectAll();
        QTest::keyClicks(view->Editor(), QString::fromLatin1(text));
    }

    ControlRef list = nullptr;
    ListView* view = nullptr;
    HuxDataBrowser& browser = *new HuxDataBrowser; // ends with its control
    std::optional<test::ChainHandler> answers;
    std::vector<std::pair<DataBrowserItemID, DataBrowserItemNotification>> told;
    int rowsAlive = 0;
    bool throws = false;
};

TEST_F(HuxDataBrowserTest, AsksTheWindowForTheTextsOfTheRowsItOwns) {
    EXPECT_THAT(Shown(), ElementsAre("one", "two", "three"));
    At(2).name = "zwei";
    browser.UpdateItems();
    EXPECT_THAT(Shown(), ElementsAre("one", "zwei", "three"));
    browser.RemoveItem(&At(2));
    browser.RemoveItem(nullptr);
    EXPECT_EQ(rowsAlive, 2);
    EXPECT_EQ(browser.GetItem(2), nullptr);
    EXPECT_THAT(Shown(), ElementsAre("one", "three"));
    throws = true;
    browser.UpdateItems();
    EXPECT_THAT(Shown(), ElementsAre("", ""));
    browser.Detach();
    EXPECT_EQ(rowsAlive, 0);
    EXPECT_EQ(Add("four"), nullptr) << "has no view";
    delete &browser;
}

TEST_F(HuxDataBrowserTest, TellsOfTheSelectionAndGivesARowOnlyWhenItIsTheOnlyOne) {
    EXPECT_EQ(List().AddItems(Items { 4, 1 }), kParamErr) << "1 is there";
    EXPECT_EQ(List().AddItems(Items { kDataBrowserNoItem }), kParamErr);
    EXPECT_EQ(browser.GetSelectItem(), nullptr);
    browser.SelectItem(At(2));
    EXPECT_EQ(browser.GetSelectItem(), &At(2));
    List().SelectItems(Items { 3, 1 });
    EXPECT_THAT(List().SelectedItems(), ElementsAre(1, 3)) << "in the order of the rows";
    EXPECT_EQ(browser.GetSelectItem(), nullptr);
    told.clear();
    browser.SelectItem(At(2));
    EXPECT_THAT(told, testing::UnorderedElementsAre(Pair(1, kDataBrowserItemDeselected),
                                                    Pair(3, kDataBrowserItemDeselected),
                                                    Pair(2, kDataBrowserItemSelected)));
    told.clear();
    EXPECT_EQ(List().RemoveItems(Items { 1, 5 }), kParamErr) << "5 is not there";
    EXPECT_EQ(List().RevealItem(1), kParamErr);
    browser.RemoveAllItems();
    EXPECT_THAT(told,
                ElementsAre(Pair(1, kDataBrowserItemRemoved), Pair(2, kDataBrowserItemDeselected),
                            Pair(2, kDataBrowserItemRemoved), Pair(3, kDataBrowserItemRemoved)));
    EXPECT_EQ(rowsAlive, 0);
}

TEST_F(HuxDataBrowserTest, TheKeysOfAnEditorEndTheEditingAndPressNoButton) {
    const ControlRef button = Make<QPushButton>();
    const test::ChainHandler counter(On(button).Target(), { test::kHit }, Logs("pressed", kNoErr));
    test::At(window).SetDefaultButton(&On(button));
    test::At(window).SetCancelButton(&On(button));
    browser.SelectItem(At(2));
    for (const auto& [key, name] :
         { std::pair(Qt::Key_Escape, "two"), { Qt::Key_Return, "abc" } }) {
        told.clear();
        QTest::keyClick(view, Qt::Key_F2);
        ASSERT_EQ(List().EditedItem(), 2U);
        Type("abc");
        QTest::keyClick(view->Editor(), key);
        QApplication::processEvents();
        EXPECT_EQ(List().EditedItem(), kDataBrowserNoItem) << key;
        EXPECT_EQ(At(2).name, name) << key;
        EXPECT_THAT(Shown(), ElementsAre("one", name, "three")) << key;
        EXPECT_THAT(
            told, ElementsAre(Pair(2, kDataBrowserEditStarted), Pair(2, kDataBrowserEditStopped)));
    }
    EXPECT_EQ(log, "");
    QTest::keyClick(view, Qt::Key_Return);
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(log, "pressed pressed ") << "without an editor they are the window's";
}

TEST_F(HuxDataBrowserTest, EditingByCall) {
    EXPECT_EQ(browser.EditItem(*Add("fixed")), kParamErr);
    EXPECT_EQ(List().EditItem(77), kParamErr);
    EXPECT_EQ(browser.EditItem(At(2)), kNoErr);
    EXPECT_EQ(browser.GetSelectItem(), &At(2));
    Type("kept");
    EXPECT_EQ(browser.EditItem(At(1)), kNoErr);
    EXPECT_EQ(At(2).name, "kept") << "another row's editor ends the first with its text";
    EXPECT_EQ(List().EditedItem(), 1U);
    Type("dropped");
    told.clear();
    browser.RemoveItem(&At(1));
    EXPECT_EQ(List().EditedItem(), kDataBrowserNoItem);
    EXPECT_THAT(told, testing::Contains(Pair(1, kDataBrowserEditStopped)).Times(1));
    EXPECT_EQ(told.back(), std::pair(DataBrowserItemID { 1 }, kDataBrowserItemRemoved));

    EXPECT_EQ(browser.EditItem(*Add("refused")), kNoErr);
    Type("no");
    EXPECT_TRUE(browser.CheckControlValue());
    EXPECT_THAT(Shown(), ElementsAre("kept", "three", "fixed", "refused"));
}

TEST_F(HuxDataBrowserTest, EditCommandsWorkOnTheEditor) {
    EXPECT_FALSE(On(list).DoEditCommand(kHICommandCut));
    EXPECT_TRUE(On(list).DoEditCommand(kHICommandSelectAll));
    EXPECT_THAT(List().SelectedItems(), ElementsAre(1, 2, 3));
    List().EditItem(1);
    Type("x");
    EXPECT_TRUE(On(list).DoEditCommand(kHICommandSelectAll));
    EXPECT_TRUE(On(list).DoEditCommand(kHICommandClear));
    EXPECT_EQ(view->Editor()->text(), "");
    EXPECT_TRUE(On(list).DoEditCommand(kHICommandUndo));
    EXPECT_EQ(view->Editor()->text(), "x");
}

TEST_F(HuxDataBrowserTest, ARenameMayDisposeOfTheWindow) {
    browser.EditItem(*Add("deadly"));
    Type("last");
    QTest::keyClick(view->Editor(), Qt::Key_Return);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(DataBrowser::Find(list), nullptr);
    EXPECT_EQ(rowsAlive, 0);
}

} // namespace
