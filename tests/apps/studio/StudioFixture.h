// SPDX-License-Identifier: BSD-3-Clause
// A window with a home of its own, and a shot to open in it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "apps/studio/MainWindow.h"
#include "support/TemporaryFolder.h"

class QApplication;

// The process's one; made by the first call.
QApplication& TheApplication();

// Runs the application's loop until the condition holds. False when it never does.
bool WaitUntil(const std::function<bool()>& condition);

class StudioTest : public testing::Test {
protected:
    StudioTest();
    ~StudioTest() override;

    // A window of its own; the one before ends. Every question is answered with "don't save".
    studio::MainWindow& NewWindow();
    studio::MainWindow& Window() { return *m_window; }
    // The composed frame is there.
    bool Settle();
    // Writes a shot of small frames, no two alike; returns its pattern.
    std::string WriteShot(const std::string& folder, int frames);
    std::filesystem::path Path(const std::string& name) const { return m_home.Path() / name; }
    std::filesystem::path AutosaveFolder() const { return Path("state/telop/autosave"); }

    TemporaryFolder m_home;

private:
    std::unique_ptr<studio::MainWindow> m_window;
};

// What lies in a file.
std::string Contents(const std::filesystem::path& file);
