// SPDX-License-Identifier: BSD-3-Clause
// The window's life, what it shows, and its part in the plug-in's dialogs. Its other sources are
// MainWindowBuild.cpp (widgets and actions) and MainWindowFiles.cpp (documents, frames, exporting).
#include "apps/studio/MainWindow.h"

#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <utility>

#include <QAction>
#include <QLabel>

#include "apps/studio/EffectPanel.h"
#include "apps/studio/ExportBar.h"
#include "apps/studio/FrameView.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/TestCard.h"
#include "apps/studio/Texts.h"
#include "apps/studio/Timeline.h"
#include "apps/studio/Transport.h"
#include "platform/ui/UIObject.h"
#include "platform/ui/Windows.h"

namespace studio {

namespace {

// How often the frame follows what a dialog edits in place.
constexpr std::chrono::milliseconds kModalInterval { 30 };
constexpr std::chrono::seconds kAutosaveInterval { 30 };

bool IsGone(EPIWindowRef window) {
    return !platform::IsValidWindowPtr(reinterpret_cast<platform::WindowRef>(window));
}

} // namespace

std::unique_ptr<host::Effect> MainWindow::MakeEffect(std::string& why) {
    // Connects the plug-in's events with the application's loop.
    platform::EnsureUserInterface();
    auto plugin = host::Plugin::LoadByName("TextOverlay", why);
    return plugin ? host::Effect::Make(std::move(plugin), why) : nullptr;
}

MainWindow::MainWindow()
    : m_project((host::SetFrontEnd(this), MakeEffect(m_pluginTrouble))),
      m_errors([this](const PluginError& error) {
          m_messages->Show(MessageBar::Kind::kError, Describe(error));
      }) {
    BuildActions();
    BuildBody();
    BuildMenus();
    BuildToolBar();
    BuildStatusBar();
    Connect();
    RestoreLayout();
    setAcceptDrops(true);
    StartCompositor();
    m_autosave = std::make_unique<host::Autosave>();
    m_autosaveTimer.start(kAutosaveInterval);
    if (!m_project.Effect())
        m_messages->Show(MessageBar::Kind::kError,
                         T("The text effect was not found, so frames are shown without text.") +
                             QLatin1Char('\n') + QString::fromStdString(m_pluginTrouble));
    OpenPanel();
    ShowShot();
    ShowContent();
    m_view->setFocus();
}

MainWindow::~MainWindow() {
    m_exporter.reset();
    m_compositor.reset();
    m_panel->Close();
    host::SetFrontEnd(nullptr);
}

QAction* MainWindow::Action(const QString& name) const {
    return findChild<QAction*>(name);
}

void MainWindow::Connect() {
    m_project.onChanged = [this] { ShowContent(); };
    m_project.onModified = [this] { ShowTitle(); };
    m_timeline->onScrub = [this](std::size_t index) {
        m_player.Stop();
        ShowFrame(index);
    };
    m_timeline->onSpansChanged = [this](const OnSpans& spans) { m_project.ChangeSpans(spans); };
    m_timeline->onMenu = [this](std::size_t index, QPoint global) { TimelineMenu(index, global); };
    m_transport->onNumber = [this](std::int64_t number) {
        m_player.Stop();
        ShowFrame(m_project.TheShot()->IndexOf(number));
    };
    m_strings->onChanged = [this](const InfoStrings& strings, int which) {
        m_project.ChangeStrings(strings, which);
    };
    m_view->onScaleChanged = [this] {
        m_scaleStatus->setText(QStringLiteral("%1 %").arg(std::lround(m_view->Scale() * 100)));
    };
    m_player.onFrame = [this](std::size_t index) { ShowFrame(index); };
    m_player.onChanged = [this] { UpdateActions(); };
    m_exportBar->onCancel = [this] {
        if (m_exporter)
            m_exporter->Cancel();
    };
    connect(&m_modalTimer, &QTimer::timeout, this, [this] { FollowModal(); });
    connect(&m_exportTimer, &QTimer::timeout, this, [this] { ShowExport(); });
    connect(&m_autosaveTimer, &QTimer::timeout, this, [this] { AutosaveNow(); });
}

// Showing

void MainWindow::ShowFrame(std::size_t index) {
    m_project.SetCurrent(index);
    auto const& shot = *m_project.TheShot();
    auto const current = m_project.Current();
    m_timeline->SetCurrent(current);
    m_transport->SetCurrent(shot.Numbers()[current]);
    m_strings->SetFrame(shot.Values(current));
    UpdateActions();
    Refresh();
}

void MainWindow::StartCompositor() {
    m_compositor = std::make_unique<Compositor>(
        m_project.Effect(), [this](const Composed& composed) { Show(composed); });
}

void MainWindow::Refresh() {
    if (!m_compositor)
        return;
    auto const& shot = m_project.TheShot();
    auto const current = m_project.Current();
    m_modalShown = m_project.LiveParams();
    m_compositor->Request({ ++m_serial, shot, current, m_project.IsOnAt(current), m_modalShown,
                            Resolve(m_project.Committed().strings, shot->Values(current)),
                            m_context });
}

void MainWindow::Show(const Composed& composed) {
    m_shownSerial = composed.serial;
    if (composed.shot != m_project.TheShot())
        return;
    m_view->SetPicture(composed.picture, QString::fromStdString(composed.why));
    ShowStatus(composed);
    ShowReports();
    auto const strings =
        Resolve(m_project.Committed().strings, composed.shot->Values(composed.index));
    // Without a frame the panel keeps the one that it has.
    if (!composed.background || (composed.background == m_background && strings == m_dialogStrings))
        return;
    bool const otherStrings = strings != m_dialogStrings;
    // The panel lets go of the old picture before it ends.
    auto const before = std::exchange(m_background, composed.background);
    auto const frame = DialogFrame();
    m_panel->ShowFrame(frame);
    if (otherStrings && !m_modal)
        m_panel->Update(frame); // of a picture alone the panel does not tell the text anew
}

void MainWindow::ShowStatus(const Composed& composed) {
    auto text = QString::fromStdString(
        std::filesystem::path(composed.shot->Name(composed.index)).filename().string());
    if (composed.shot->IsTestCard())
        text = T("Test card");
    if (composed.background) {
        auto const& image = *composed.background->image;
        text += QStringLiteral("   %1 × %2").arg(image.Width()).arg(image.Height());
        text += QStringLiteral("   ") + T("%1 bits").arg(image.Format().BytesPerChannel() * 8);
    }
    m_frameStatus->setText(text);
    if (!composed.why.empty() && !composed.picture.isNull())
        Complain(T("The text could not be drawn into this frame."), composed.why);
}

void MainWindow::ShowContent() {
    m_strings->SetStrings(m_project.Committed().strings);
    m_timeline->SetSpans(m_project.Spans());
    if (m_panel->IsOpen() && !m_modal)
        m_panel->Update(DialogFrame());
    UpdateActions();
    ShowTitle();
    Refresh();
}

void MainWindow::ShowShot() {
    auto const numbers = m_project.TheShot()->Numbers();
    m_timeline->SetFrames({ numbers.begin(), numbers.end() });
    m_timeline->SetSpans(m_project.Spans());
    m_transport->SetFrames(numbers);
    ShowFrame(m_project.Current());
    ShowTitle();
}

void MainWindow::ShowTitle() {
    auto const& shot = *m_project.TheShot();
    auto name = m_file.empty()
                    ? T("Untitled")
                    : QString::fromStdString(std::filesystem::path(m_file).stem().string());
    if (m_file.empty() && !shot.IsTestCard())
        name = QString::fromStdString(std::filesystem::path(shot.Input()).filename().string());
    setWindowTitle(name + QStringLiteral("[*] — Telop Studio"));
    setWindowFilePath(QString::fromStdString(m_file));
    setWindowModified(m_project.IsModified());
}

// Fonts and characters that could not be honoured, once each.
void MainWindow::ShowReports() {
    auto const reports = m_context->Reports();
    if (reports.size() <= m_reportsShown)
        return;
    m_reportsShown = reports.size();
    m_messages->Show(MessageBar::Kind::kWarning,
                     T("The text is not drawn to the letter.") + QLatin1Char('\n') +
                         QString::fromStdString(platform::Describe(reports.back())));
}

void MainWindow::Complain(const QString& text, const std::string& why) {
    m_messages->Show(MessageBar::Kind::kError,
                     text + QLatin1Char('\n') + QString::fromStdString(why));
}

// The plug-in's dialogs

host::Dialog::Frame MainWindow::DialogFrame() {
    host::Dialog::Frame frame;
    // Of a frame that cannot be read, so that there is room for the text.
    frame.width = kTestCardWidth;
    frame.height = kTestCardHeight;
    auto const& shot = *m_project.TheShot();
    m_dialogStrings = Resolve(m_project.Committed().strings, shot.Values(m_project.Current()));
    if (m_background) {
        frame.width = m_background->image->Width();
        frame.height = m_background->image->Height();
        frame.composite = m_background->image.get();
    }
    if (m_project.Committed().strings.present)
        frame.strings = m_dialogStrings;
    return frame;
}

void MainWindow::OpenPanel() {
    if (m_project.Effect())
        m_panel->Open(*m_project.Effect(), DialogFrame());
    else
        m_panel->SetMessage(T("There is no text effect."));
}

std::int32_t MainWindow::ParametersChanged(EPIHandleRef) {
    m_project.CommitParams();
    return 0;
}

std::int32_t MainWindow::Option(double value) {
    if (value >= 1)
        m_project.TurnTextOn(m_project.Current());
    return 0;
}

std::int32_t MainWindow::ModalOpens(EPIWindowRef window) {
    m_player.Stop();
    m_modal = window;
    m_modalTimer.start(kModalInterval);
    UpdateActions();
    return 0;
}

// What the dialog reported is committed by now. What it edited and did not report, as when it is
// cancelled, goes.
std::int32_t MainWindow::ModalEnds(EPIWindowRef) {
    m_modal = nullptr;
    m_modalTimer.stop();
    m_project.DropLiveChanges();
    UpdateActions();
    ShowTitle();
    return 0;
}

void MainWindow::FollowModal() {
    // A dialog that failed may be gone without a word.
    if (IsGone(m_modal)) {
        ModalEnds(m_modal);
        return;
    }
    auto const live = m_project.LiveParams();
    if (std::memcmp(&live, &m_modalShown, sizeof live) != 0)
        Refresh();
}

void MainWindow::FileFailed(const std::string& why) {
    Complain(T("A file could not be read or written."), why);
}

} // namespace studio
