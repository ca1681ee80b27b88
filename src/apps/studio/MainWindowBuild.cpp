// SPDX-License-Identifier: BSD-3-Clause
// The window's widgets, and its actions with their shortcuts.
#include <algorithm>
#include <array>
#include <utility>

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "apps/studio/CueEditor.h"
#include "apps/studio/CueExchange.h"
#include "apps/studio/ExportBar.h"
#include "apps/studio/FrameView.h"
#include "apps/studio/MainWindow.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/Texts.h"
#include "apps/studio/Timeline.h"
#include "apps/studio/TrackList.h"
#include "apps/studio/TracksPanel.h"
#include "apps/studio/Transport.h"

namespace studio {

namespace {

// The actions with keys that only the frame and the timeline take.
constexpr std::array kFrameKeys { "first",  "previous", "play", "next",    "last",
                                  "textOn", "start",    "end",  "cueSplit" };
// Those that only the timeline takes.
constexpr std::array kTimelineKeys { "timelineIn", "timelineOut", "timelineFit" };

constexpr double kTimelineZoom = 1.5;

} // namespace

QAction* MainWindow::Make(const QString& name, const QString& text, const QKeySequence& key,
                          std::function<void()> run) {
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
    action->setIcon(MakeIcon(name));
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, std::move(run));
    // Without mnemonic and dots, for buttons and tool tips.
    auto plain = QString(text).remove(QRegularExpression(QStringLiteral("\\(&.\\)|&|…")));
    action->setIconText(plain);
    if (!key.isEmpty())
        plain += QStringLiteral(" (%1)").arg(key.toString(QKeySequence::NativeText));
    action->setToolTip(plain);
    return action;
}

void MainWindow::BuildFileActions() {
    Make("new", T("&New"), QKeySequence::New, [this] {
        if (m_document.MayDiscard())
            m_document.New();
    });
    Make("open", T("&Open Document…"), QKeySequence::Open, [this] { m_document.AskForDocument(); });
    Make("frames", T("Open &Frames…"), { "Ctrl+Shift+O" }, [this] { m_document.AskForFrames(); });
    Make("folder", T("Open Fo&lder of Frames…"), { "Ctrl+Alt+O" },
         [this] { m_document.AskForFolder(); });
    Make("pattern", T("Open Frames by &Pattern…"), {}, [this] { m_document.AskForPattern(); });
    Make("card", T("Show &Test Card"), {}, [this] { m_document.ShowTestCard(); });
    Make("save", T("&Save"), QKeySequence::Save, [this] { m_document.Save(); });
    Make("saveAs", T("Save &As…"), { "Ctrl+Shift+S" }, [this] { m_document.SaveAs(); });
    // Without Shift the keys belong to text fields, where they go to the end of the line.
    Make("export", T("&Export Frames…"), { "Ctrl+Shift+E" }, [this] { AskForExport(); });
    Make("cuesImport", T("&Import Cues…"), {}, [this] { m_cueFiles->AskForImport(); });
    Make("cuesExport", T("Export &Cues…"), {}, [this] { m_cueFiles->AskForExport(); });
    Make("quit", T("&Quit"), { "Ctrl+Q" }, [this] { close(); });
}

void MainWindow::BuildEditActions() {
    auto& stack = m_project.Undo();
    Make("undo", T("&Undo"), QKeySequence::Undo, [&stack] { stack.undo(); });
    Make("redo", T("&Redo"), { "Ctrl+Shift+Z" }, [&stack] { stack.redo(); });
    connect(&stack, &QUndoStack::indexChanged, this, [this] { UpdateActions(); });
    Make("about", T("&About Telop Studio"), {}, [this] {
        QMessageBox::about(
            this, T("About Telop Studio"),
            QStringLiteral("<h3>Telop Studio %1</h3>").arg(QStringLiteral(TELOP_VERSION)) +
                T("Burns camera directions, cut numbers, names and dialogue into "
                  "animation frames."));
    });
}

void MainWindow::BuildViewActions() {
    Make("fit", T("&Fit in Window"), { "Ctrl+0" }, [this] { m_view->Fit(); });
    Make("actual", T("&Actual Size"), { "Ctrl+1" }, [this] { m_view->SetScale(1); });
    Make("zoomIn", T("Zoom &In"), {}, [this] { m_view->ZoomBy(1); });
    Make("zoomOut", T("Zoom &Out"), { "Ctrl+-" }, [this] { m_view->ZoomBy(-1); });
    Action("zoomIn")->setShortcuts({ { "Ctrl++" }, { "Ctrl+=" } });
    Make("timelineIn", T("Zoom &Timeline In"), { Qt::Key_Plus },
         [this] { m_timeline->ZoomBy(kTimelineZoom); });
    Make("timelineOut", T("Zoom Ti&meline Out"), { Qt::Key_Minus },
         [this] { m_timeline->ZoomBy(1 / kTimelineZoom); });
    Make("timelineFit", T("Fit Tim&eline"), { Qt::Key_0 }, [this] { m_timeline->FitFrames(); });
    Action("timelineIn")->setShortcuts({ { Qt::Key_Plus }, { Qt::Key_Equal } });
    auto* const group = new QActionGroup(this);
    constexpr std::pair<const char*, Theme> kThemes[] { { N("&System Colors"), Theme::kSystem },
                                                        { N("&Light"), Theme::kLight },
                                                        { N("&Dark"), Theme::kDark } };
    for (const auto& [text, theme] : kThemes) {
        auto* const action = Make(QStringLiteral("theme%1").arg(static_cast<int>(theme)), T(text),
                                  {}, [this, theme = theme] { ChooseTheme(theme); });
        action->setCheckable(true);
        action->setActionGroup(group);
    }
}

void MainWindow::BuildFrameActions() {
    Make("first", T("&First Frame"), { Qt::Key_Home }, [this] { GoTo(0); });
    Make("previous", T("&Previous Frame"), { Qt::Key_Left }, [this] { Step(-1); });
    Make("play", T("P&lay"), { Qt::Key_Space }, [this] { TogglePlay(); });
    Make("next", T("&Next Frame"), { Qt::Key_Right }, [this] { Step(1); });
    Make("last", T("L&ast Frame"), { Qt::Key_End },
         [this] { GoTo(m_project.TheShot()->Count() - 1); });
    Make("textOn", T("Text &On Here"), { Qt::Key_T },
         [this] { TurnHere(!m_project.IsOnAt(m_project.Current()), m_project.Current()); });
    Make("start", T("Text On From &Here"), { Qt::Key_BracketLeft }, [this] { SetEdgeHere(false); });
    Make("end", T("Text On &Up To Here"), { Qt::Key_BracketRight }, [this] { SetEdgeHere(true); });
    Make("everywhere", T("Text On &Everywhere"), {}, [this] {
        m_project.ChangeSpans({ { 0, m_project.TheShot()->Count() - 1 } });
    });
    Make("nowhere", T("Text Off Every&where"), {}, [this] { m_project.ChangeSpans({}); });
    Action("textOn")->setCheckable(true);
}

// Their keys are the timeline's own.
void MainWindow::BuildCueActions() {
    Make("cueInsert", T("&Insert Cue…"), { Qt::Key_Insert }, [this] { m_cues->Insert(); });
    Make("cueEdit", T("&Words of Cue…"), { Qt::Key_Return }, [this] { m_cues->EditWords(); });
    Make("cueSplit", T("&Split Cue Here"), { Qt::Key_S }, [this] { m_cues->Split(); });
    Make("cueDelete", T("&Delete Cue"), { Qt::Key_Delete },
         [this] { m_timeline->DeleteSelected(); });
    Make("cuesFromText", T("Cues from the &Text"), {}, [this] { m_cues->MakeCues(); });
    Make("textFromCues", T("Te&xt from the Cues"), {}, [this] { m_cues->MakeText(); });
    for (const auto* const name : { "cueInsert", "cueEdit", "cueDelete" })
        Action(name)->setShortcutContext(Qt::WidgetShortcut);
}

void MainWindow::BuildPlaybackRates() {
    auto* const menu = new QMenu(this);
    Make("rate", T("Playback &Rate"), {}, [] {})->setMenu(menu);
    Action("rate")->setToolTip(T("Frames a second in playback"));
    auto* const group = new QActionGroup(menu);
    UsePlaybackRate(Preferences().value("playback/rate", "24").toString());
    for (const auto* const rate : kPlaybackRates) {
        const auto name = QString::fromLatin1(rate);
        auto* const action = menu->addAction(name, this, [this, name] {
            Preferences().setValue("playback/rate", name);
            UsePlaybackRate(name);
        });
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(name.toStdString() == m_player.Rate().Name());
    }
}

void MainWindow::UsePlaybackRate(const QString& name) {
    std::string why;
    if (const auto rate = host::FrameRate::Parse(name.toStdString(), why))
        m_player.SetRate(*rate);
    Action("rate")->setIconText(T("%1 fps").arg(QString::fromStdString(m_player.Rate().Name())));
}

void MainWindow::BuildBody() {
    auto* const body = new QWidget(this);
    m_view = new FrameView(body);
    m_transport = new Transport({ Action("first"), Action("previous"), Action("play"),
                                  Action("next"), Action("last"), Action("rate") },
                                { Action("textOn"), Action("fit"), Action("actual") }, body);
    m_timeline = new Timeline(body);
    m_cues = std::make_unique<CueEditor>(m_project, *m_timeline, *m_messages, *this);
    m_cueFiles = std::make_unique<CueExchange>(m_project, *m_messages, *this,
                                               [this] { return m_player.Rate(); });
    m_exportBar = new ExportBar(body);
    auto* const column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(m_view, 1);
    column->addWidget(m_transport);
    column->addWidget(m_timeline);
    column->addSpacing(4);
    column->addWidget(m_exportBar);
    setCentralWidget(body);
    // Keys without Control belong to whatever has the keyboard: these are only for the frame and the
    // timeline.
    for (const auto* const name : kFrameKeys) {
        Action(name)->setShortcutContext(Qt::WidgetShortcut);
        m_view->addAction(Action(name));
        m_timeline->addAction(Action(name));
    }
    for (const auto* const name : kTimelineKeys) {
        Action(name)->setShortcutContext(Qt::WidgetShortcut);
        m_timeline->addAction(Action(name));
    }
    m_view->setMinimumHeight(160);
    m_tracks = new TracksPanel(m_project, this);
    m_tracks->SetActions({ Action("addTrack"), Action("duplicateTrack"), Action("deleteTrack"),
                           Action("raiseTrack"), Action("lowerTrack") },
                         { Action("renameTrack"), Action("cut"), Action("copy"), Action("paste"),
                           Action("delete") });
    resizeDocks(
        { AddDock(T("Tracks"), QStringLiteral("tracksDock"), m_tracks, Qt::LeftDockWidgetArea) },
        { 230 }, Qt::Horizontal);
    m_tracks->setMinimumWidth(200);
    m_view->addAction(Action("delete"));
    m_strings = new StringsPanel(this);
    auto* const area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(m_strings);
    resizeDocks({ AddDock(T("Text"), QStringLiteral("effectDock"), m_plugin),
                  AddDock(T("Information Strings"), QStringLiteral("stringsDock"), area) },
                { 2, 5 }, Qt::Vertical);
}

QDockWidget* MainWindow::AddDock(const QString& title, const QString& name, QWidget* content,
                                 Qt::DockWidgetArea area) {
    auto* const dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setAccessibleName(title);
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
    content->setMinimumWidth(280);
    dock->setWidget(content);
    addDockWidget(area, dock);
    return dock;
}

void MainWindow::BuildMenus() {
    const auto add = [this](QMenu* menu, std::initializer_list<const char*> names) {
        for (const auto* const name : names)
            name ? menu->addAction(Action(name)) : static_cast<void>(menu->addSeparator());
    };
    auto* const file = menuBar()->addMenu(T("&File"));
    add(file, { "new", "open", "frames", "folder", "pattern" });
    m_recentMenu = file->addMenu(T("Open &Recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this,
            [this] { m_document.FillRecentMenu(*m_recentMenu); });
    add(file, { "card", nullptr, "save", "saveAs", nullptr, "cuesImport", "cuesExport", nullptr,
                "export", nullptr, "quit" });
    add(menuBar()->addMenu(T("&Edit")),
        { "undo", "redo", nullptr, "cut", "copy", "paste", "delete", nullptr, "selectAll" });
    add(menuBar()->addMenu(T("&Track")),
        { "addTrack", "duplicateTrack", "renameTrack", nullptr, "eye", "lock", nullptr,
          "raiseTrack", "lowerTrack", nullptr, "deleteTrack" });
    auto* const frame = menuBar()->addMenu(T("F&rame"));
    add(frame, { "play", "rate", nullptr, "first", "previous", "next", "last", nullptr, "textOn",
                 "start", "end", "everywhere", "nowhere" });
    add(menuBar()->addMenu(T("&Cues")), { "cueInsert", "cueEdit", "cueSplit", "cueDelete", nullptr,
                                          "cuesFromText", "textFromCues" });
    auto* const view = menuBar()->addMenu(T("&View"));
    add(view, { "fit", "actual", "zoomIn", "zoomOut", nullptr, "safeAreas", nullptr, "timelineIn",
                "timelineOut", "timelineFit", nullptr });
    add(view->addMenu(T("&Colors")), { "theme0", "theme1", "theme2" });
    view->addSeparator();
    for (auto* const dock : findChildren<QDockWidget*>())
        view->addAction(dock->toggleViewAction());
    add(menuBar()->addMenu(T("&Help")), { "about" });
}

void MainWindow::BuildToolBar() {
    auto* const bar = addToolBar(T("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setMovable(false);
    bar->setIconSize({ 20, 20 });
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const auto* const name : { "frames", "save", "", "undo", "redo", "", "export" })
        *name ? bar->addAction(Action(name)) : static_cast<void>(bar->addSeparator());
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
}

void MainWindow::BuildStatusBar() {
    m_frameStatus = new QLabel(this);
    m_scaleStatus = new QLabel(this);
    m_frameStatus->setContentsMargins(8, 0, 0, 0);
    statusBar()->addWidget(m_frameStatus, 1);
    statusBar()->addPermanentWidget(m_scaleStatus);
    m_scaleStatus->setToolTip(T("Size of the frame on the screen"));
}

void MainWindow::RestoreLayout() {
    resize(1320, 820);
    const auto preferences = Preferences();
    restoreGeometry(preferences.value("window/geometry").toByteArray());
    restoreState(preferences.value("window/state").toByteArray());
    if (preferences.value("view/safeAreas").toBool())
        Action("safeAreas")->trigger();
    const auto theme = std::clamp(preferences.value("window/theme", 0).toInt(), 0, 2);
    Action(QStringLiteral("theme%1").arg(theme))->setChecked(true);
    SetTheme(static_cast<Theme>(theme));
}

void MainWindow::ChooseTheme(Theme theme) {
    Preferences().setValue("window/theme", static_cast<int>(theme));
    SetTheme(theme);
    m_messages->FollowPalette();
}

} // namespace studio
