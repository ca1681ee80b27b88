// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/StudioFixture.h"

#include <array>

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <QtTest>

#include "apps/studio/Style.h"
#include "host/Tables.h"

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
    return QTest::qWaitFor(condition, 20000);
}

QAbstractButton* ButtonOf(const QWidget& widget, const QString& text) {
    for (auto* const button : widget.findChildren<QAbstractButton*>())
        if (button->isVisible() && button->text().remove(QLatin1Char('&')) == text)
            return button;
    return nullptr;
}

void Click(QAbstractButton* button) {
    ASSERT_TRUE(button);
    QTest::mouseClick(button, Qt::LeftButton, {}, { 8, button->height() / 2 });
}

StudioTest::StudioTest() {
    TheApplication();
    studio::Preferences().clear();
    setenv("XDG_STATE_HOME", Path("state").c_str(), 1);
    NewWindow();
}

studio::MainWindow& StudioTest::NewWindow() {
    m_window.reset();
    m_window = std::make_unique<studio::MainWindow>();
    EXPECT_TRUE(m_window->Plugin().Effect()) << Message();
    m_window->show();
    EXPECT_TRUE(Settle());
    return *m_window;
}

bool StudioTest::Settle() {
    return WaitUntil([this] { return m_window->IsSettled(); });
}

bool StudioTest::Answering(const QString& button, const std::function<void()>& what) {
    bool asked = false;
    QTimer timer;
    timer.callOnTimeout([&] {
        auto* const question = QApplication::activeModalWidget();
        if (!question || asked)
            return;
        asked = true;
        Click(ButtonOf(*question, button));
        if (question->isVisible()) // or the test would wait forever
            question->close();
    });
    timer.start(0);
    what();
    return asked;
}

void StudioTest::Edit(const std::function<void(_TEXTPARAM&)>& edit) {
    edit(*Project().Effect()->Params());
    host::ParamTable().ParametersChanged(nullptr);
}

std::string StudioTest::WriteShot(const std::string& folder, int frames) const {
    std::filesystem::create_directories(Path(folder));
    for (int i = 1; i <= frames; ++i) {
        QImage picture(320, 180, QImage::Format_RGB32);
        picture.fill(QColor::fromRgba64(static_cast<ushort>(5003 * i), 23019, 41001));
        const auto name = "shot.000" + std::to_string(i) + ".png";
        EXPECT_TRUE(picture.save(QString::fromStdString((Path(folder) / name).string())));
    }
    return (Path(folder) / "shot.####.png").string();
}
