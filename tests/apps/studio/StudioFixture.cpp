// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/StudioFixture.h"

#include <array>
#include <fstream>
#include <iterator>

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>

#include "apps/studio/MessageBar.h"
#include "apps/studio/Pixels.h"
#include "apps/studio/Style.h"
#include "host/frames/PngWriter.h"

QApplication& TheApplication() {
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

bool WaitUntil(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < 20000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(1);
    }
    return condition();
}

StudioTest::StudioTest() {
    TheApplication();
    studio::Preferences().clear();
    setenv("XDG_STATE_HOME", Path("state").c_str(), 1);
    NewWindow();
}

StudioTest::~StudioTest() = default;

studio::MainWindow& StudioTest::NewWindow() {
    m_window.reset();
    m_window = std::make_unique<studio::MainWindow>();
    m_window->onUnsaved = [] { return studio::Answer::kDiscard; };
    m_window->onLeftCopy = [](const host::LeftCopy&) { return studio::RestoreAnswer::kLater; };
    EXPECT_TRUE(m_window->TheProject().Effect()) << m_window->Messages().Text().toStdString();
    m_window->show();
    EXPECT_TRUE(Settle());
    return *m_window;
}

bool StudioTest::Settle() {
    return WaitUntil([this] { return m_window->IsSettled(); });
}

std::string StudioTest::WriteShot(const std::string& folder, int frames) {
    host::PngWriter writer;
    std::string why;
    std::filesystem::create_directories(Path(folder));
    for (int i = 1; i <= frames; ++i) {
        QImage picture(320, 180, QImage::Format_RGB32);
        picture.fill(QColor(20 * i % 256, 90, 160));
        host::Frame frame;
        EXPECT_TRUE(studio::ToFrame(picture, frame));
        auto const name = "shot.000" + std::to_string(i) + ".png";
        EXPECT_EQ(writer.Write(Path(folder) / name, frame, {}, host::Existing::kOverwrite, why),
                  host::OutputResult::kWritten)
            << why;
    }
    return (Path(folder) / "shot.####.png").string();
}

std::string Contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}
