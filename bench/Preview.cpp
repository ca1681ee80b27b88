// SPDX-License-Identifier: BSD-3-Clause
// Measures what it takes until the placement view shows a change of a frame of 1920x1080 pixels.
//   preview/keystroke/<scale>          another text in the dialogue
//   preview/drag/<scale>               a step of a drag, which moves the text
//   preview/pan/<scale>                a step of the hand, which moves the frame
//   preview/dialog-keystroke/<scale>   a real key in the text field of the plug-in's own dialog
//   preview/dialog-drag/<scale>        an arrow key that moves the text in its preview
// The pane is as large as the frame is at that scale (per cent), except for the hand, which needs a
// frame that is larger than its pane. Each ends with the pixels in the window's buffer.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <benchmark/benchmark.h>

#include "host/Effect.h"
#include "host/Handle.h"
#include "host/Image.h"
#include "host/Tables.h"
#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/Controls.h"
#include "platform/ui/UIObject.h"
#include "preview/CMTextPreviewStatic.h"
#include "preview/CTextEditDlg.h"

namespace {

constexpr std::int32_t kFrameWidth = 1920;
constexpr std::int32_t kFrameHeight = 1080;
constexpr std::int32_t kPreviewItem = 91;
constexpr std::int32_t kDialogueItem = 211;

std::unique_ptr<host::Image> MakeFrame() {
    auto frame = host::Image::Make(kFrameWidth, kFrameHeight, host::kArgb32);
    for (std::int32_t y = 0; y < kFrameHeight; ++y) {
        std::uint8_t value = static_cast<std::uint8_t>(y);
        for (std::uint8_t& byte : frame->Row(y))
            byte = value++;
    }
    return frame;
}

// What the loop has to do before it waits again.
void Settle() {
    QCoreApplication::processEvents();
}

// As the text edit dialog is one.
class View : public CTextEditDlg {
public:
    View() : CTextEditDlg(kPreviewItem) {}
    void DragUpdate() override {
        control.Draw(true);
        control.FlushPortBuffer();
    }
    bool IsDragButton() override { return false; }
    void ZoomBy(long /*steps*/) override {}

    CMTextPreviewStatic control { *this };
};

class Scene {
public:
    Scene(std::int32_t width, std::int32_t height)
        : m_frame(MakeFrame()),
          m_background(&host::ObjectTable(), &host::OffscreenTable(host::LateEntries::kPresent),
                       m_frame->Ref()) {
        const auto right = static_cast<std::int16_t>(width);
        const auto bottom = static_cast<std::int16_t>(height);
        const platform::Rect whole { 0, 0, bottom, right };
        m_window = platform::Window::Create(whole);
        if (!m_window)
            throw std::runtime_error("there is no user interface");
        auto* const pane = platform::Control::Create(m_window, "UserPane", whole);
        pane->id = platform::ControlID { kHuxPropertyCreator, kPreviewItem };
        platform::Window::Find(m_window)->Show();
        FillText();
        _EPIRECORD record = host::MakeRecord();
        record.hFixedParam = m_params.Ref();
        record.nFrameWidth = kFrameWidth;
        record.nFrameHeight = kFrameHeight;
        view.control.Attach(pane->Ref());
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
        platform::Window::Find(m_window)->Dispose();
    }

    // The line gets another number.
    void Type(unsigned number) {
        const host::Pinned<_TEXTPARAM> param(m_params);
        std::snprintf(param->szDialogue, sizeof param->szDialogue,
                      "The first line of a dialogue,\rand %05u letters of another.", number);
    }

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

// The plug-in's own dialog over the frame, with its window so large that the preview has the size asked
// for.
class Dialog {
public:
    Dialog(std::int32_t width, std::int32_t height) : m_frame(MakeFrame()) {
        std::string why;
        static const std::shared_ptr<host::Plugin> plugin = host::Plugin::Load(TELOP_BUNDLE, why);
        m_effect = plugin ? host::Effect::Make(plugin, why) : nullptr;
        if (!m_effect || !platform::EnsureUserInterface())
            throw std::runtime_error("there is no dialog: " + why);
        m_effect->Params()->dwFlags = TEXT_DIALOGUE;
        m_record = m_effect->Record();
        m_record.nFrameWidth = kFrameWidth;
        m_record.nFrameHeight = kFrameHeight;
        m_record.hComposite = m_frame->Ref();
        m_record.dwDialogFlags = EPI_DIALOG_TEXT_EDIT;
        plugin->Call(epiCreateSettingDialog, &m_record);
        platform::Window* const made = platform::Window::Find(m_record.hDialogWindow);
        if (!made)
            throw std::runtime_error("there is no dialog");
        made->Show();
        QWidget* const window = &made->Widget();
        Settle();
        const QSize around = window->size() - Get(kPreviewItem).size();
        window->resize(around + QSize(width, height));
        Settle();
        if (Get(kPreviewItem).size() != QSize(width, height))
            throw std::runtime_error("the preview has another size");
    }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog() { m_effect->ThePlugin().Call(epiDestroySettingDialog, &m_record); }

    QWidget& Get(std::int32_t id) const {
        for (QWidget* const widget :
             platform::Window::Find(m_record.hDialogWindow)->Widget().findChildren<QWidget*>())
            if (widget->property("controlID").toInt() == id)
                return *widget;
        throw std::runtime_error("there is no control " + std::to_string(id));
    }
    void Press(std::int32_t id, Qt::Key key, const QString& text = {}) const {
        QWidget& widget = Get(id);
        widget.setFocus();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&widget, &press);
        Settle();
    }

private:
    std::unique_ptr<host::Image> m_frame;
    std::unique_ptr<host::Effect> m_effect;
    _EPIRECORD m_record {};
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
        Settle();
    }
}

void Drag(benchmark::State& state) {
    Scene scene(At(state.range(0), kFrameWidth), At(state.range(0), kFrameHeight));
    scene.view.WholeSizeView(1);
    long step = 7;
    for ([[maybe_unused]] auto _ : state) {
        scene.view.MoveText(step, step);
        Settle();
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
        Settle();
        step = -step;
    }
}

void DialogKeystroke(benchmark::State& state) {
    const Dialog dialog(At(state.range(0), kFrameWidth), At(state.range(0), kFrameHeight));
    bool isLonger = false;
    for ([[maybe_unused]] auto _ : state) {
        isLonger = !isLonger;
        if (isLonger)
            dialog.Press(kDialogueItem, Qt::Key_A, QStringLiteral("a"));
        else
            dialog.Press(kDialogueItem, Qt::Key_Backspace);
    }
}

void DialogDrag(benchmark::State& state) {
    const Dialog dialog(At(state.range(0), kFrameWidth), At(state.range(0), kFrameHeight));
    bool isRight = false;
    for ([[maybe_unused]] auto _ : state) {
        isRight = !isRight;
        dialog.Press(kPreviewItem, isRight ? Qt::Key_Right : Qt::Key_Left);
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
    benchmark::RegisterBenchmark("preview/dialog-keystroke", DialogKeystroke)->Arg(50)->Arg(100);
    benchmark::RegisterBenchmark("preview/dialog-drag", DialogDrag)->Arg(50)->Arg(100);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
