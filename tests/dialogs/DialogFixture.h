// SPDX-License-Identifier: BSD-3-Clause
// The effect's dialogs under a host that notes what it is told, and a user who waits for windows to come
// up.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

#include "huxCommon/HostErrors.h"
#include "platform/ui/UIFixture.h"
#include "support/EffectFixture.h"
#include "support/WindowRefs.h"

namespace test {

struct HostThrows {};

class DialogFixture : public EffectFixture, public host::FrontEnd {
protected:
    enum : std::uint32_t { kPanel = 0, kEdit = EPI_DIALOG_TEXT_EDIT };

    void SetUp() override {
        host::SetFrontEnd(this);
        EffectFixture::SetUp();
    }
    void TearDown() override {
        Destroy();
        StopWaiting();
        EXPECT_TRUE(errors.TakeAll().empty());
        host::SetFrontEnd(nullptr);
        EffectFixture::TearDown();
    }

    // The host -----------------------------------------------------------------------------------
    std::int32_t ParametersChanged(EPIHandleRef) override { return Hear("changed"); }
    std::int32_t Option(double value) override {
        return Hear("option" + std::to_string(static_cast<int>(value)));
    }
    std::int32_t Call(std::int32_t flag) override {
        Hear("call" + std::to_string(flag));
        return answer;
    }
    std::int32_t ModalOpens(EPIWindowRef window) override {
        EXPECT_TRUE(test::IsThere(window));
        return Hear("opens");
    }
    std::int32_t ModalEnds(EPIWindowRef window) override {
        EXPECT_NE(window, nullptr);
        return Hear("ends");
    }
    std::int32_t Hear(const std::string& what) {
        heard += what + " ";
        if (onHeard)
            onHeard(what);
        return 0;
    }
    std::string TakeHeard() { return std::exchange(heard, {}); }

    _TEXT_DIALOG_PARAM& Settings() {
        return *reinterpret_cast<_TEXT_DIALOG_PARAM*>(effect->Settings().data());
    }
    long Run(long selector) { return effect->ThePlugin().Call(selector, &record); }
    QWidget* Open(std::uint32_t flags) {
        record.dwDialogFlags = flags;
        EXPECT_EQ(Run(epiCreateSettingDialog), 0);
        platform::Window* const window = platform::Window::Find(record.hDialogWindow);
        root = window ? &window->Widget() : nullptr;
        if (window) {
            window->Show();
            EXPECT_TRUE(QTest::qWaitForWindowActive(root));
        }
        return root;
    }
    void Destroy() {
        if (record.pDialogHolder)
            Run(epiDestroySettingDialog);
        root = nullptr;
        EXPECT_EQ(record.hDialogWindow, nullptr);
    }
    std::int32_t Notify(std::int32_t code) {
        record.nNotifyCode = code;
        record.nNotifyResult = 77;
        EXPECT_EQ(Run(epiDialogNotify), 0);
        return record.nNotifyResult;
    }

    // The user -----------------------------------------------------------------------------------
    static QWidget* Find(const QWidget& window, int id) {
        for (QWidget* const widget : window.findChildren<QWidget*>())
            if (widget->property("controlID").isValid() &&
                widget->property("controlID").toInt() == id)
                return widget;
        return nullptr;
    }
    template <class Widget>
    Widget& Get(int id) const {
        auto* const widget = dynamic_cast<Widget*>(Find(*root, id));
        if (!widget)
            throw std::runtime_error("no control " + std::to_string(id));
        return *widget;
    }
    int Scale() const { return Get<QWidget>(96).property("text").toInt(); } // of the preview
    bool IsEnabled(int id) const { return Get<QWidget>(id).isEnabled(); }
    // Where the widget is seen, and at its left, where a check box is as well.
    // Moves the focus as a person's click does.
    static void Press(const QWidget& widget) {
        QWidget& window = *widget.window();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        const QPoint place = widget.mapTo(&window, QPoint(9, widget.height() / 2));
        QWidget* const there = window.childAt(place);
        ASSERT_TRUE(there && (there == &widget || widget.isAncestorOf(there)));
        QTest::mouseClick(there, Qt::LeftButton, {}, there->mapFrom(&window, place));
    }
    void Click(int id) const { Press(Get<QWidget>(id)); }
    // Whatever has the focus gets the key.
    static void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        Drain(); // the dialog hears of each key after it has typed
    }
    static void Type(const char* text) {
        Key(Qt::Key_A, Qt::ControlModifier);
        Key(Qt::Key_Delete);
        for (const char* letter = text; *letter != '\0'; ++letter) {
            QTest::keyClick(QApplication::focusWidget(), *letter);
            Drain();
        }
    }
    void Type(int id, const char* text) const {
        Click(id);
        Type(text);
    }
    // row counts from the end when it is negative.
    void Pick(int id, int row) const {
        auto& popup = Get<QComboBox>(id);
        popup.showPopup();
        popup.view()->setCurrentIndex(
            popup.model()->index(row < 0 ? popup.count() + row : row, popup.modelColumn()));
        QTest::keyClick(popup.view(), Qt::Key_Return);
        Drain();
    }
    std::string Shown(int id) const {
        auto& popup = Get<QComboBox>(id);
        return popup.currentIndex() < 0 ? "" : popup.currentText().toStdString();
    }
    // The visible window that has the first control and not the second one.
    static QWidget* WindowWith(int id, int without) {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (window->isVisible() && Find(*window, id) && !Find(*window, without))
                return window;
        return nullptr;
    }
    // Acts once, when what it waits for is there, in whatever loop runs then.
    void When(std::function<bool()> isThere, std::function<void()> act) {
        auto* const timer = m_users.emplace_back(std::make_unique<QTimer>()).get();
        QObject::connect(timer, &QTimer::timeout, timer, [=] {
            if (!isThere())
                return;
            timer->stop();
            act();
        });
        timer->start(0);
    }
    void StopWaiting() { m_users.clear(); }
    template <class Dialog>
    void WhenModal(std::function<void(Dialog&)> act) {
        const auto current = [] {
            return qobject_cast<Dialog*>(QApplication::activeModalWidget());
        };
        When([=] { return current() != nullptr; }, [=] { act(*current()); });
    }

    QWidget* root = nullptr; // the window whose controls are meant
    std::int32_t answer = 1;
    std::string heard;
    std::function<void(const std::string&)> onHeard;
    HostErrors errors;

private:
    std::vector<std::unique_ptr<QTimer>> m_users;
};

} // namespace test
