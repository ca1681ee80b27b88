// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDataBrowser.h"

#include <memory>
#include <string>
#include <vector>

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <gmock/gmock.h>

#include "huxCommon/ToolkitForms.h"
#include "support/WindowRefs.h"

using namespace platform;

namespace {

constexpr DataBrowserPropertyID kName = 0x4E616D65; // "Name"

class Row : public HuxDataBrowserItemData {
public:
    Row(int index, int& alive) : index(index), m_alive(++alive) {}
    ~Row() override { --m_alive; }

    int const index;

private:
    int& m_alive;
};

// A dialog with a list of names, which are edited in place.
class ListDialog : public HuxDialogImpl {
public:
    explicit ListDialog(const test::ToolkitBundle& bundle) { SetBundle(bundle.Get()); }

    const char* GetWindowName() override { return "List"; }
    const char* GetNibName() override { return "Toolkit"; }
    void _AttachControls() override { AttachControl(list, 201); }
    bool OnInitDialog() override { return list.InstallCallbacks(kName) == kNoErr; }
    OSStatus HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) override {
        HuxDataBrowser::ItemDataRequest request;
        if (HuxDataBrowser::ReadItemData(event, &request))
            return HandleData(request);
        HuxDataBrowser::ItemNotification told;
        if (HuxDataBrowser::ReadNotification(event, &told))
            notifications.push_back({ told.message, told.row != nullptr });
        return kEventNotHandledErr;
    }

    OSStatus HandleData(const HuxDataBrowser::ItemDataRequest& request) {
        EXPECT_EQ(request.id, (ControlID { kHuxPropertyCreator, 201 }));
        EXPECT_EQ(request.control, list.GetControlRef());
        if (!request.row)
            return kEventNotHandledErr;
        if (request.property == kDataBrowserItemIsEditableProperty) {
            request.itemData->boolean = true;
            return kNoErr;
        }
        EXPECT_EQ(request.property, kName);
        if (throws)
            throw std::bad_alloc();
        auto const index = static_cast<std::size_t>(static_cast<Row*>(request.row)->index);
        if (request.setValue)
            names[index] = request.itemData->text;
        else
            request.itemData->text = names[index];
        return kNoErr;
    }

    void Fill() {
        list.RemoveAllItems();
        for (int i = 0; i < static_cast<int>(names.size()); ++i)
            list.AddItem(std::make_unique<Row>(i, rowsAlive));
    }
    Row* RowAt(int index) const {
        return static_cast<Row*>(list.FindItem(
            [index](auto& row) { return static_cast<const Row&>(row).index == index; }));
    }
    // The texts that the view shows.
    std::vector<std::string> Shown() const {
        auto const* view = test::At(m_hwnd).Widget().findChild<QAbstractItemView*>();
        std::vector<std::string> texts;
        for (int i = 0; view && i < view->model()->rowCount(); ++i)
            texts.push_back(view->model()->index(i, 0).data().toString().toStdString());
        return texts;
    }

    int rowsAlive = 0; // before the list, which ends the rows
    HuxDataBrowser list;
    std::vector<std::string> names { "one", "two", "three" };
    std::vector<std::pair<DataBrowserItemNotification, bool>> notifications;
    bool throws = false;
};

class HuxDataBrowserTest : public testing::Test {
protected:
    HuxDataBrowserTest() {
        m_bundle.AddForm("List", { { "ListView", 201 } });
        EXPECT_EQ(m_dialog.CreateDialog(), kNoErr);
        m_dialog.Fill();
        m_dialog.ShowWindow();
    }

    test::ToolkitBundle m_bundle;
    test::HostErrors m_errors;
    ListDialog m_dialog { m_bundle };
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(HuxDataBrowserTest, AsksTheWindowsObjectForItsTexts) {
    EXPECT_THAT(m_dialog.Shown(), ElementsAre("one", "two", "three"));
    m_dialog.names[1] = "zwei";
    m_dialog.list.UpdateItems();
    EXPECT_THAT(m_dialog.Shown(), ElementsAre("one", "zwei", "three"));
}

TEST_F(HuxDataBrowserTest, OwnsItsRows) {
    EXPECT_EQ(m_dialog.rowsAlive, 3);
    m_dialog.list.RemoveItem(m_dialog.RowAt(1));
    m_dialog.list.RemoveItem(nullptr);
    EXPECT_EQ(m_dialog.rowsAlive, 2);
    EXPECT_EQ(m_dialog.RowAt(1), nullptr);
    EXPECT_THAT(m_dialog.Shown(), ElementsAre("one", "three"));
    m_dialog.Dispose();
    EXPECT_EQ(m_dialog.rowsAlive, 0);
    EXPECT_EQ(m_dialog.list.AddItem(std::make_unique<Row>(9, m_dialog.rowsAlive)), nullptr)
        << "there is no view";
    EXPECT_EQ(m_dialog.rowsAlive, 0);
}

TEST_F(HuxDataBrowserTest, GivesTheSelectedRowOnlyWhenItIsTheOnlyOne) {
    EXPECT_EQ(m_dialog.list.GetSelectItem(), nullptr);
    m_dialog.list.SelectItem(*m_dialog.RowAt(2));
    EXPECT_EQ(m_dialog.list.GetSelectItem(), m_dialog.RowAt(2));
    m_dialog.list.SelectItem(*m_dialog.RowAt(0));
    EXPECT_EQ(m_dialog.list.GetSelectItem(), m_dialog.RowAt(0));
    DataBrowserItemID const both[] = { m_dialog.RowAt(0)->GetItemID(),
                                       m_dialog.RowAt(1)->GetItemID() };
    DataBrowser::Find(m_dialog.list.GetControlRef())->SelectItems(both);
    EXPECT_EQ(m_dialog.list.GetSelectItem(), nullptr);
    EXPECT_THAT(m_dialog.notifications,
                testing::Contains(std::pair(kDataBrowserItemSelected, true)));
}

TEST_F(HuxDataBrowserTest, AThrowInAnAnswerIsReportedAndChangesNothing) {
    m_dialog.throws = true;
    m_dialog.list.UpdateItems();
    m_dialog.Shown();
    EXPECT_THAT(m_errors.TakeAll(), testing::Not(IsEmpty()));
    m_dialog.throws = false;
    EXPECT_THAT(m_dialog.names, ElementsAre("one", "two", "three"));
}

} // namespace
