// SPDX-License-Identifier: BSD-3-Clause
// Measures what it takes until the placement view shows a change of a frame of 1920x1080 pixels.
//   preview/keystroke/<scale>   another text in the dialogue
//   preview/drag/<scale>        a step of a drag, which moves the text
//   preview/pan/<scale>         a step of the hand, which moves the frame
// The pane is as large as the frame is at that scale (per cent), except for the hand, which needs a
// frame that is larger than its pane. Each ends with the pixels in the window's buffer.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <QCoreApplication>
#include <benchmark/benchmark.h>

#include "host/Handle.h"
#include "host/Image.h"
#include "host/Tables.h"
#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/Controls.h"
#include "preview/CMTextPreviewStatic.h"
#include "preview/CTextEditDlg.h"

namespace {

constexpr std::int32_t kFrameWidth = 1920;
constexpr std::int32_t kFrameHeight = 1080;
constexpr std::int32_t kPreviewItem = 91;

// As the text edit dialog is one.
class View : public CTextEditDlg {
public:
    View() : CTextEditDlg(kPreviewItem) {}
    void DragUpdate() override {
        control.Draw(true);
        if (platform::IsWindowBuffered(m_hWindow))
            control.FlushPortBuffer();
    }
    bool IsDragButton() override { return false; }
    void ZoomBy(long /*steps*/) override {}

    CMTextPreviewStatic control { *this };
};

class Scene {
public:
    Scene(std::int32_t width, std::int32_t height)
        : m_frame(host::Image::Make(kFrameWidth, kFrameHeight, host::kArgb32)),
          m_background(&host::ObjectTable(), &host::OffscreenTable(host::LateEntries::kPresent),
                       m_frame->Ref()) {
        const auto right = static_cast<std::int16_t>(width);
        const auto bottom = static_cast<std::int16_t>(height);
        platform::ControlRef pane = nullptr;
        if (platform::CreateNewWindow({ 0, 0, bottom, right }, &m_window) != platform::kNoErr ||
            platform::CreateUserPaneControl(m_window, { 0, 0, bottom, right }, &pane) !=
                platform::kNoErr)
            throw std::runtime_error("there is no user interface");
        platform::SetControlID(pane, { kHuxPropertyCreator, kPreviewItem });
        platform::ShowWindow(m_window);
        for (std::int32_t y = 0; y < kFrameHeight; ++y) {
            std::uint8_t value = static_cast<std::uint8_t>(y);
            for (std::uint8_t& byte : m_frame->Row(y))
                byte = value++;
        }
        FillText();
        _EPIRECORD record = host::MakeRecord();
        record.hFixedParam = m_params.Ref();
        record.nFrameWidth = kFrameWidth;
        record.nFrameHeight = kFrameHeight;
        view.control.Attach(pane);
        view.control.InitPreview(nullptr);
        if (view.InitializeTextDlg(&record, m_window, 0, 0) == 0)
            throw std::runtime_error("there is no preview");
        view.SetBkImage(&m_background, 0);
        Settle();
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene() {
        view.control.TermPreview();
        view.control.Detach();
        platform::DisposeWindow(m_window);
    }

    // The line gets another number.
    void Type(unsigned number) {
        const host::Pinned<_TEXTPARAM> param(m_params);
        std::snprintf(param->szDialogue, sizeof param->szDialogue,
                      "The first line of a dialogue,\rand %05u letters of another.", number);
    }
    // What the loop has to do before it waits again.
    static void Settle() { QCoreApplication::processEvents(); }

    View view;

private:
    void FillText() {
        Type(0);
        const host::Pinned<_TEXTPARAM> param(m_params);
        param->ptPos = { 400, 700 };
        param->nFontSize = 48;
        param->crText = 0xFFFFFF;
        param->nOpacity = 80;
        param->dwFlags = TEXT_DIALOGUE;
    }

    host::Handle m_params { sizeof(_TEXTPARAM) };
    std::unique_ptr<host::Image> m_frame;
    PIOffscreen m_background;
    platform::WindowRef m_window = nullptr;
};

std::int32_t At(std::int64_t scale, std::int32_t side) {
    return static_cast<std::int32_t>(side * scale / 100);
}

void Keystroke(benchmark::State& state) {
    Scene scene(At(state.range(0), kFrameWidth), At(state.range(0), kFrameHeight));
    scene.view.WholeSizeView(1);
    unsigned number = 0;
    for ([[maybe_unused]] auto _ : state) {
        scene.Type(++number % 100000);
        scene.view.UpdatePreview(1);
        Scene::Settle();
    }
}

void Drag(benchmark::State& state) {
    Scene scene(At(state.range(0), kFrameWidth), At(state.range(0), kFrameHeight));
    scene.view.WholeSizeView(1);
    long step = 7;
    for ([[maybe_unused]] auto _ : state) {
        scene.view.MoveText(step, step);
        Scene::Settle();
        step = -step;
    }
}

void Pan(benchmark::State& state) {
    Scene scene(kFrameWidth / 2, kFrameHeight / 2);
    scene.view.SetViewScale(state.range(0), 1);
    long step = 7;
    for ([[maybe_unused]] auto _ : state) {
        scene.view.ScrollHorz(step, 0);
        scene.view.UpdatePreview(1);
        scene.view.DragUpdate();
        Scene::Settle();
        step = -step;
    }
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RegisterBenchmark("preview/keystroke", Keystroke)->Arg(50)->Arg(100);
    benchmark::RegisterBenchmark("preview/drag", Drag)->Arg(50)->Arg(100);
    benchmark::RegisterBenchmark("preview/pan", Pan)->Arg(100)->Arg(200);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
