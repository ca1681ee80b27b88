// SPDX-License-Identifier: BSD-3-Clause
// A window with a home of its own, and a shot to open in it.
#pragma once

#include <array>
#include <functional>
#include <string>

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <QtTest>
#include <gmock/gmock.h>

#include "apps/studio/FrameView.h"
#include "apps/studio/MainWindow.h"
#include "apps/studio/Style.h"
#include "host/Tables.h"
#include "support/TemporaryFolder.h"

// The process's one; made by the first call.
inline QApplication& TheApplication() {
    // Settings are looked for below a folder that is chosen when the first one is read.
    static const TemporaryFolder home;
    static int count = 1;
    static std::array<char, 13> name { "studio-tests" };
    static std::array<char*, 2> arguments { name.data(), nullptr };
    static QApplication& application = []() -> QApplication& {
        setenv("XDG_CONFIG_HOME", home.Path().c_str(), 1);
        setenv("LANGUAGE", "en", 1);
        setenv("TELOP_PLUGIN_PATH", TELOP_BUNDLE, 1);
        auto& made = *new QApplication(count, arguments.data());
        studio::PrepareStyle();
        return made;
    }();
    return application;
}

// Runs the application's loop until the condition holds. False when it never does.
inline bool WaitUntil(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20000);
}

// Presses its button with this text, mnemonics aside.
inline void Click(const QWidget& widget, const QString& text) {
    for (auto* const button : widget.findChildren<QAbstractButton*>())
        if (button->isVisible() && button->text().remove(QLatin1Char('&')) == text)
            return QTest::mouseClick(button, Qt::LeftButton, {}, { 8, button->height() / 2 });
    ADD_FAILURE() << "there is no button " << text.toStdString();
}

class StudioTest : public testing::Test {
protected:
    StudioTest() {
        TheApplication();
        studio::Preferences().clear();
        setenv("XDG_STATE_HOME", Path("state").c_str(), 1);
        NewWindow();
    }

    // A window of its own; the one before ends without a question.
    studio::MainWindow& NewWindow() {
        m_window.reset();
        m_window = std::make_unique<studio::MainWindow>();
        EXPECT_TRUE(m_window->Plugin().Effect()) << Message();
        m_window->show();
        EXPECT_TRUE(Settle());
        return *m_window;
    }
    studio::MainWindow& Window() { return *m_window; }
    studio::DocumentSession& Document() { return m_window->Document(); }
    studio::Project& Project() { return m_window->TheProject(); }
    std::string Message() const { return m_window->Messages().Text().toStdString(); }
    // The composed frame is there.
    bool Settle() {
        return WaitUntil([this] { return m_window->IsSettled(); });
    }
    QImage Picture() {
        EXPECT_TRUE(Settle());
        return m_window->View().Picture();
    }
    // Does something that asks, and clicks that button of the question. False: nothing was asked.
    static bool Answering(const QString& button, const std::function<void()>& what) {
        bool asked = false;
        QTimer timer;
        timer.callOnTimeout([&] {
            auto* const question = QApplication::activeModalWidget();
            if (!question || asked)
                return;
            asked = true;
            Click(*question, button);
            if (question->isVisible()) // or the test would wait forever
                question->close();
        });
        timer.start(0);
        what();
        return asked;
    }
    // Changes the live parameters and reports that, as a dialog does.
    void Edit(const std::function<void(_TEXTPARAM&)>& edit) {
        edit(*Project().Effect()->Params());
        host::ParamTable().ParametersChanged(nullptr);
    }

    // Writes a shot of small frames, no two alike; returns its pattern.
    std::string WriteShot(const std::string& folder, int frames) const {
        std::filesystem::create_directories(Path(folder));
        for (int i = 1; i <= frames; ++i) {
            QImage picture(320, 180, QImage::Format_RGB32);
            picture.fill(QColor::fromRgba64(static_cast<ushort>(5003 * i), 23019, 41001));
            const auto name = "shot.000" + std::to_string(i) + ".png";
            EXPECT_TRUE(picture.save(QString::fromStdString((Path(folder) / name).string())));
        }
        return (Path(folder) / "shot.####.png").string();
    }
    // The window opens one.
    void OpenShot(int frames) {
        ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", frames))) << Message();
    }
    std::filesystem::path Path(const std::string& name) const { return m_home.Path() / name; }
    std::filesystem::path AutosaveFolder() const { return Path("state/telop/autosave"); }

    TemporaryFolder m_home;

private:
    std::unique_ptr<studio::MainWindow> m_window;
};
