// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDataBrowser.h"

#include <memory>
#include <string>
#include <vector>

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <gmock/gmock.h>

#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Window.h"
#include "support/ChainHandler.h"
#include "support/WindowRefs.h"

using namespace platform;

namespace {

using testing::ElementsAre;

constexpr DataBrowserPropertyID kName = 0x4E616D65; // "Name"

class Row : public HuxDataBrowserItemData {
public:
    Row(int index, int& alive) : index(index), m_alive(++alive) {}
    ~Row() override { --m_alive; }

    const int index;

private:
    int& m_alive;
};

class HuxDataBrowserTest : public testing::Test {
protected:
    HuxDataBrowserTest() {
        QWidget* const widget = MakeCustomWidget("ListView", &test::At(m_window).Widget());
        Control* const control = MakeControl(*widget, test::At(m_window));
        control->id = ControlID { kHuxPropertyCreator, 201 };
        m_view = dynamic_cast<QAbstractItemView*>(widget);
        m_list.Attach(control->Ref());
        EXPECT_EQ(m_list.InstallCallbacks(kName), kNoErr);
        for (int i = 0; i < 3; ++i)
            m_list.AddItem(std::make_unique<Row>(i, m_rowsAlive));
    }
    ~HuxDataBrowserTest() override { test::Dispose(m_window); }

    OSStatus Answer(EventRef event) {
        HuxDataBrowser::ItemDataRequest request;
        HuxDataBrowser::ItemNotification told;
        if (HuxDataBrowser::ReadNotification(event, &told) && told.row)
            m_lastMessage = told.message;
        if (!HuxDataBrowser::ReadItemData(event, &request) || !request.row)
            return kEventNotHandledErr;
        EXPECT_EQ(request.id, (ControlID { kHuxPropertyCreator, 201 }));
        if (m_throws)
            throw std::bad_alloc();
        request.itemData->text =
            m_names.at(static_cast<std::size_t>(static_cast<Row*>(request.row)->index));
        return kNoErr;
    }
    Row* RowAt(int index) const {
        return static_cast<Row*>(m_list.FindItem(
            [index](auto& row) { return static_cast<const Row&>(row).index == index; }));
    }
    // The texts that the view shows.
    std::vector<std::string> Shown() const {
        std::vector<std::string> texts;
        for (int i = 0; i < m_view->model()->rowCount(); ++i)
            texts.push_back(m_view->model()->index(i, 0).data().toString().toStdString());
        return texts;
    }

    int m_rowsAlive = 0;
    bool m_throws = false;
    std::vector<std::string> m_names { "one", "two", "three" };
    DataBrowserItemNotification m_lastMessage = 0;
    WindowRef m_window = Window::Create({ 0, 0, 200, 300 });
    const test::ChainHandler m_handler {
        UIObject::TargetOf(m_window),
        { { kHuxEventClassDataBrowser, kHuxEventDataBrowserItemData },
          { kHuxEventClassDataBrowser, kHuxEventDataBrowserNotification } },
        [this](EventRef event) { return Answer(event); }
    };
    QAbstractItemView* m_view = nullptr;
    HuxDataBrowser& m_list = *new HuxDataBrowser; // ends with its control
};

TEST_F(HuxDataBrowserTest, AsksTheWindowForTheTextsOfTheRowsItOwns) {
    EXPECT_THAT(Shown(), ElementsAre("one", "two", "three"));
    m_names[1] = "zwei";
    m_list.UpdateItems();
    EXPECT_THAT(Shown(), ElementsAre("one", "zwei", "three"));
    m_list.RemoveItem(RowAt(1));
    m_list.RemoveItem(nullptr);
    EXPECT_EQ(m_rowsAlive, 2);
    EXPECT_EQ(RowAt(1), nullptr);
    EXPECT_THAT(Shown(), ElementsAre("one", "three"));
    m_throws = true;
    m_list.UpdateItems();
    EXPECT_THAT(Shown(), ElementsAre("", ""));
    m_list.Detach();
    EXPECT_EQ(m_rowsAlive, 0);
    EXPECT_EQ(m_list.AddItem(std::make_unique<Row>(9, m_rowsAlive)), nullptr) << "has no view";
    EXPECT_EQ(m_rowsAlive, 0);
    delete &m_list;
}

TEST_F(HuxDataBrowserTest, GivesTheSelectedRowOnlyWhenItIsTheOnlyOne) {
    EXPECT_EQ(m_list.GetSelectItem(), nullptr);
    for (const int index : { 2, 0 }) {
        m_list.SelectItem(*RowAt(index));
        EXPECT_EQ(m_list.GetSelectItem(), RowAt(index));
        EXPECT_EQ(m_lastMessage, kDataBrowserItemSelected);
    }
    DataBrowser& view = *DataBrowser::Find(m_list.GetControlRef());
    view.SelectItems(view.AllItems());
    EXPECT_EQ(m_list.GetSelectItem(), nullptr);
    test::Dispose(m_window);
    EXPECT_EQ(m_rowsAlive, 0);
}

} // namespace
