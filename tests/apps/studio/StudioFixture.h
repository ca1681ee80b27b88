// SPDX-License-Identifier: BSD-3-Clause
// A window with a home of its own, and a shot to open in it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "apps/studio/MainWindow.h"
#include "support/TemporaryFolder.h"

class QAbstractButton;
class QApplication;

// The process's one; made by the first call.
QApplication& TheApplication();

// Runs the application's loop until the condition holds. False when it never does.
bool WaitUntil(const std::function<bool()>& condition);

// Its button with this text, mnemonics aside; null when there is none.
QAbstractButton* ButtonOf(const QWidget& widget, const QString& text);
void Click(QAbstractButton* button);

class StudioTest : public testing::Test {
protected:
    StudioTest();

    // A window of its own; the one before ends without a question.
    studio::MainWindow& NewWindow();
    studio::MainWindow& Window() { return *m_window; }
    studio::DocumentSession& Document() { return m_window->Document(); }
    studio::Project& Project() { return m_window->TheProject(); }
    std::string Message() const { return m_window->Messages().Text().toStdString(); }
    // The composed frame is there.
    bool Settle();
    // Does something that asks, and clicks that button of the question. False: nothing was asked.
    static bool Answering(const QString& button, const std::function<void()>& what);
    // Changes the live parameters and reports that, as a dialog does.
    void Edit(const std::function<void(_TEXTPARAM&)>& edit);

    // Writes a shot of small frames, no two alike; returns its pattern.
    std::string WriteShot(const std::string& folder, int frames) const;
    std::filesystem::path Path(const std::string& name) const { return m_home.Path() / name; }
    std::filesystem::path AutosaveFolder() const { return Path("state/telop/autosave"); }

    TemporaryFolder m_home;

private:
    std::unique_ptr<studio::MainWindow> m_window;
};
