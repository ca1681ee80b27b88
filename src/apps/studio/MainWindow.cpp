// SPDX-License-Identifier: BSD-3-Clause
// What the window shows and does; MainWindowBuild.cpp makes its widgets and actions.
#include "apps/studio/MainWindow.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include "apps/studio/CueEditor.h"
#include "apps/studio/CueExchange.h"
#include "apps/studio/ExportBar.h"
#include "apps/studio/ExportDialog.h"
#include "apps/studio/FrameView.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/Texts.h"
#include "apps/studio/Timeline.h"
#include "apps/studio/TracksPanel.h"
#include "apps/studio/Transport.h"

namespace studio {

MainWindow::MainWindow()
    : m_messages(new MessageBar(this)), m_plugin(new PluginSession(this)),
      m_document(m_plugin->Effect(), *m_messages, *this), m_project(m_document.TheProject()) {
    BuildFileActions();
    BuildEditActions();
    BuildViewActions();
    BuildFrameActions();
    BuildCueActions();
    BuildPlaybackRates();
    BuildTrackActions();
    BuildBody();
    BuildMenus();
    BuildToolBar();
    BuildStatusBar();
    Connect();
    ConnectTracks();
    RestoreLayout();
    setAcceptDrops(true);
    m_compositor = std::make_unique<Compositor>(
        m_plugin->Effect(), [this](const Composed& composed) { Show(composed); });
    if (!m_plugin->Effect())
        Complain(T("The text effect was not found, so frames are shown without text."),
                 m_plugin->Trouble());
    m_plugin->Open(m_project);
    ShowShot();
    ShowContent();
    m_view->setFocus();
}

// The effect goes with the plug-in's session, so whoever uses it goes first.
MainWindow::~MainWindow() {
    delete m_exportBar;
    m_compositor.reset();
    delete m_plugin;
}

QAction* MainWindow::Action(const QString& name) const {
    return findChild<QAction*>(name);
}

void MainWindow::Connect() {
    m_project.onChanged = [this] { ShowContent(); };
    m_project.onModified = [this] { ShowTitle(); };
    m_document.onShot = [this] { ShowShot(); };
    m_plugin->onEdited = [this] { Refresh(); };
    m_plugin->onError = [this](const QString& what) {
        m_messages->Show(MessageBar::Kind::kError, what);
    };
    m_plugin->onModal = [this] {
        m_player.Stop();
        UpdateActions();
        ShowTitle();
    };
    m_timeline->onScrub = [this](std::size_t index) { GoTo(index); };
    m_timeline->onSelect = [this](std::size_t track) { m_project.Select(track); };
    m_timeline->onChange = [this](const QString& step, const host::Track& track) {
        m_cues->Change(step, track);
    };
    m_timeline->onNewCue = [this](FrameSpan frames) { m_cues->InsertOn(frames); };
    m_timeline->onInsert = [this] { m_cues->Insert(); };
    m_timeline->onEdit = [this] { m_cues->EditWords(); };
    m_timeline->onMenu = [this](std::size_t index, QPoint global) { TimelineMenu(index, global); };
    m_transport->onNumber = [this](std::int64_t number) {
        GoTo(m_project.TheShot()->IndexOf(number));
    };
    m_strings->onChanged = [this](const ShotStrings& strings, int which) {
        m_project.ChangeStrings(strings, which);
    };
    m_view->onScaleChanged = [this] {
        m_scaleStatus->setText(QStringLiteral("%1 %").arg(std::lround(m_view->Scale() * 100)));
    };
    m_player.onFrame = [this](std::size_t index) { ShowFrame(index); };
    m_player.onChanged = [this] { UpdateActions(); };
    m_exportBar->onEnd = [this](const QString& summary, const QStringList& failures,
                                const QStringList& reports) {
        EndExport(summary, failures, reports);
    };
}

void MainWindow::Complain(const QString& text, const std::string& why) {
    m_messages->Show(MessageBar::Kind::kError,
                     text + QLatin1Char('\n') + QString::fromStdString(why));
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_plugin->IsModal() || !m_document.MayDiscard())
        return event->ignore();
    auto preferences = Preferences();
    preferences.setValue("window/geometry", saveGeometry());
    preferences.setValue("window/state", saveState());
    m_player.Stop();
    m_document.Forget();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && !m_plugin->IsModal())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    std::vector<std::string> files;
    for (const auto& url : event->mimeData()->urls())
        if (url.isLocalFile())
            files.push_back(url.toLocalFile().toStdString());
    if (files.empty())
        return;
    event->acceptProposedAction();
    m_document.OpenDropped(files);
}

// Showing

void MainWindow::ShowFrame(std::size_t index) {
    if (m_project.SetCurrent(index))
        m_plugin->Update();
    const auto& shot = *m_project.TheShot();
    const auto current = m_project.Current();
    m_timeline->SetCurrent(current);
    m_transport->SetCurrent(shot.Numbers()[current]);
    m_strings->SetFrame(m_project.Values(current));
    UpdateActions();
    Compose();
}

void MainWindow::Refresh() {
    std::vector<std::string> problems;
    m_text =
        std::make_shared<host::ShotText>(host::ShotText::Of(m_project.LiveDocument(), problems));
    m_textTrouble = problems.empty() ? std::string() : problems.front();
    Compose();
}

void MainWindow::Compose() {
    m_compositor->Request({ ++m_serial, m_project.TheShot(), m_project.Current(), m_project.Clock(),
                            m_text, m_textTrouble, m_document.Text() });
}

void MainWindow::Show(const Composed& composed) {
    m_shownSerial = composed.serial;
    if (composed.shot != m_project.TheShot())
        return;
    m_view->SetPicture(composed.picture, QString::fromStdString(composed.why));
    ShowTexts(composed);
    ShowStatus(composed);
    ShowTrouble(composed);
    m_plugin->ShowFrame(composed.background);
}

void MainWindow::ShowStatus(const Composed& composed) {
    auto text = QString::fromStdString(
        std::filesystem::path(composed.shot->Name(composed.index)).filename().string());
    if (composed.shot->IsTestCard())
        text = T("Test card");
    if (composed.background) {
        const auto& image = *composed.background->image;
        text += QStringLiteral("   %1 × %2").arg(image.Width()).arg(image.Height());
        text += QStringLiteral("   ") + T("%1 bits").arg(image.Format().BytesPerChannel() * 8);
    }
    m_frameStatus->setText(text);
}

// A picture with a reason is one without its text. The message goes when the text is drawn again.
void MainWindow::ShowTrouble(const Composed& composed) {
    if (!composed.why.empty() && !composed.picture.isNull()) {
        Complain(T("The text could not be drawn into this frame."), composed.why);
        m_drawTrouble = m_messages->Text();
    } else if (!m_drawTrouble.isEmpty()) {
        if (m_messages->Text() == m_drawTrouble)
            m_messages->Clear();
        m_drawTrouble.clear();
    }
}

void MainWindow::ShowContent() {
    m_strings->SetStrings(m_project.Committed().strings);
    ShowTracks();
    m_view->EndDrag();
    m_tracks->Update();
    m_plugin->setEnabled(!m_project.Committed().Selected().isLocked);
    m_plugin->Update();
    UpdateActions();
    ShowTitle();
    Refresh();
}

void MainWindow::ShowTracks() {
    m_timeline->SetTracks(m_project.Committed().tracks, m_project.Committed().selected);
}

void MainWindow::ShowShot() {
    m_player.Stop();
    const auto numbers = m_project.TheShot()->Numbers();
    m_timeline->SetFrames({ numbers.begin(), numbers.end() });
    ShowTracks();
    m_transport->SetFrames(numbers);
    ShowFrame(m_project.Current());
    ShowTitle();
}

void MainWindow::ShowTitle() {
    setWindowTitle(m_document.Name() + QStringLiteral("[*] — Telop Studio"));
    setWindowFilePath(QString::fromStdString(m_document.File()));
    setWindowModified(m_project.IsModified());
}

void MainWindow::UpdateActions() {
    const bool free = !m_plugin->IsModal();
    auto& stack = m_project.Undo();
    for (auto* const action : findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
        action->setEnabled(free);
    Action("undo")->setText(stack.canUndo() ? T("&Undo %1").arg(stack.undoText()) : T("&Undo"));
    Action("redo")->setText(stack.canRedo() ? T("&Redo %1").arg(stack.redoText()) : T("&Redo"));
    Action("undo")->setIconText(T("Undo"));
    Action("redo")->setIconText(T("Redo"));
    Action("undo")->setEnabled(free && stack.canUndo());
    Action("redo")->setEnabled(free && stack.canRedo());
    Action("export")->setEnabled(free && m_plugin->Effect() && !m_exportBar->IsRunning());
    Action("textOn")->setChecked(m_project.IsOnAt(m_project.Current()));
    for (const auto* const name : { "textOn", "start", "end", "everywhere", "nowhere" })
        Action(name)->setEnabled(free && !m_cues->IsLocked());
    Action("play")->setIcon(MakeIcon(m_player.IsPlaying() ? "pause" : "play"));
    Action("play")->setText(m_player.IsPlaying() ? T("&Pause") : T("P&lay"));
}

// Frames and ranges

void MainWindow::GoTo(std::size_t index) {
    m_player.Stop();
    ShowFrame(index);
}

void MainWindow::Step(std::ptrdiff_t by) {
    const auto last = static_cast<std::ptrdiff_t>(m_project.TheShot()->Count()) - 1;
    const auto to = static_cast<std::ptrdiff_t>(m_project.Current()) + by;
    GoTo(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(to, 0, last)));
}

void MainWindow::TogglePlay() {
    if (m_player.IsPlaying())
        m_player.Stop();
    else if (m_project.TheShot()->Count() > 1)
        m_player.Start(m_project.Current(), m_project.TheShot()->Count());
}

void MainWindow::TurnHere(bool on, std::size_t index) {
    const auto spans = m_project.Spans();
    m_project.ChangeSpans(on ? TurnOn(spans, { index, index }) : TurnOff(spans, { index, index }));
}

// The stretch around the frame, else the next one on that side, begins or ends here.
void MainWindow::SetEdgeHere(bool end) {
    if (m_cues->SetEdgeHere(end))
        return;
    const auto spans = m_project.Spans();
    const auto here = m_project.Current();
    OnSpan span { here, here };
    for (const auto& known : spans) {
        if (!end && known.last >= here) {
            span.last = known.last;
            break;
        }
        if (end && known.first <= here)
            span.first = known.first;
    }
    if (IsOn(spans, here)) {
        const auto around = spans[SpanAt(spans, here)];
        m_project.ChangeSpans(TurnOn(TurnOff(spans, around), span));
    } else {
        m_project.ChangeSpans(TurnOn(spans, span));
    }
}

void MainWindow::TimelineMenu(std::size_t index, QPoint global) {
    QMenu menu(this);
    if (m_cues->HasCues()) {
        GoTo(index); // what the menu does is done here
        for (const auto* const name :
             { "cueInsert", "cueEdit", "cueSplit", "cueDelete", "textFromCues" })
            menu.addAction(Action(name));
        menu.exec(global);
        return;
    }
    const bool on = m_project.IsOnAt(index);
    auto* const turnOn =
        menu.addAction(T("Text On Here"), this, [this, index] { TurnHere(true, index); });
    auto* const turnOff =
        menu.addAction(T("Text Off Here"), this, [this, index] { TurnHere(false, index); });
    turnOn->setEnabled(!on);
    turnOff->setEnabled(on);
    if (on)
        menu.addAction(T("Text Off in This Whole Range"), this, [this, index] {
            const auto spans = m_project.Spans();
            m_project.ChangeSpans(TurnOff(spans, spans[SpanAt(spans, index)]));
        });
    menu.addSeparator();
    menu.addAction(Action("everywhere"));
    menu.addAction(Action("nowhere"));
    menu.addSeparator();
    menu.addAction(Action("cueInsert"));
    menu.addAction(Action("cuesFromText"));
    menu.exec(global);
}

// Exporting

void MainWindow::AskForExport() {
    const auto& shot = *m_project.TheShot();
    if (shot.IsTestCard())
        return m_messages->Show(
            MessageBar::Kind::kInformation,
            T("The test card is not exported. Open the frames that get the text."),
            T("&Open Frames…"), [this] { m_document.AskForFrames(); });
    ExportDialog dialog(shot, (shot.Folder() / "telop" / "").string(), this);
    if (dialog.exec() == QDialog::Accepted)
        StartExport(dialog.Options());
}

void MainWindow::StartExport(const host::ExportOptions& options) {
    if (!m_plugin->Effect() || m_exportBar->IsRunning())
        return;
    host::PlanProblem problem;
    if (!m_exportBar->Start(m_project.ToDocument(), *m_plugin->Effect(), options, problem))
        return Complain(T("The frames cannot be exported."), problem.text);
    m_messages->Clear();
    UpdateActions();
}

// The bar has room for the first of each kind.
void MainWindow::EndExport(const QString& summary, const QStringList& failures,
                           const QStringList& reports) {
    UpdateActions();
    const auto kind = !failures.isEmpty()  ? MessageBar::Kind::kError
                      : !reports.isEmpty() ? MessageBar::Kind::kWarning
                                           : MessageBar::Kind::kInformation;
    m_messages->ShowList(kind, summary, failures.mid(0, 1) + reports.mid(0, 1), failures + reports,
                         T("Export"));
}

} // namespace studio
