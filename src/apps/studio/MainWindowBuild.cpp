// SPDX-License-Identifier: BSD-3-Clause
// The window's widgets, its actions with their shortcuts, and what steps, plays and turns the text on.
#include <algorithm>
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

#include "apps/studio/EffectPanel.h"
#include "apps/studio/ExportBar.h"
#include "apps/studio/FrameView.h"
#include "apps/studio/Icons.h"
#include "apps/studio/MainWindow.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/Texts.h"
#include "apps/studio/Timeline.h"
#include "apps/studio/Transport.h"

namespace studio {

QAction* MainWindow::Make(const QString& name, const QString& text, const QKeySequence& key,
                          std::function<void()> run) {
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
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

void MainWindow::BuildActions() {
    BuildFileActions();
    BuildEditActions();
    BuildViewActions();
    BuildFrameActions();
}

void MainWindow::BuildFileActions() {
    Make("new", T("&New"), QKeySequence::New, [this] {
        if (MayDiscard())
            NewDocument();
    });
    Make("open", T("&Open Document…"), QKeySequence::Open, [this] { AskForDocument(); });
    Make("frames", T("Open &Frames…"), { "Ctrl+Shift+O" }, [this] { AskForFrames(); });
    Make("folder", T("Open Fo&lder of Frames…"), { "Ctrl+Alt+O" }, [this] { AskForFolder(); });
    Make("pattern", T("Open Frames by &Pattern…"), {}, [this] { AskForPattern(); });
    Make("card", T("Show &Test Card"), {}, [this] { TakeShot(Shot::TestCard()); });
    Make("save", T("&Save"), QKeySequence::Save, [this] { Save(); });
    Make("saveAs", T("Save &As…"), { "Ctrl+Shift+S" }, [this] { SaveAs(); });
    // Without Shift the keys belong to text fields, where they go to the end of the line.
    Make("export", T("&Export Frames…"), { "Ctrl+Shift+E" }, [this] { AskForExport(); });
    Make("quit", T("&Quit"), { "Ctrl+Q" }, [this] { close(); });
    Action("frames")->setIcon(MakeIcon(Glyph::kOpen));
    Action("save")->setIcon(MakeIcon(Glyph::kSave));
    Action("export")->setIcon(MakeIcon(Glyph::kExport));
}

void MainWindow::BuildEditActions() {
    auto& stack = m_project.Undo();
    auto* const undo = Make("undo", T("&Undo"), QKeySequence::Undo, [&stack] { stack.undo(); });
    auto* const redo = Make("redo", T("&Redo"), { "Ctrl+Shift+Z" }, [&stack] { stack.redo(); });
    undo->setIcon(MakeIcon(Glyph::kUndo));
    redo->setIcon(MakeIcon(Glyph::kRedo));
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
    Action("fit")->setIcon(MakeIcon(Glyph::kFit));
    Action("actual")->setIcon(MakeIcon(Glyph::kActual));
    auto* const group = new QActionGroup(this);
    constexpr std::pair<const char*, Theme> kThemes[] { { N("&System Colors"), Theme::kSystem },
                                                        { N("&Light"), Theme::kLight },
                                                        { N("&Dark"), Theme::kDark } };
    for (auto const& [text, theme] : kThemes) {
        auto* const action = Make(QStringLiteral("theme%1").arg(static_cast<int>(theme)), T(text),
                                  {}, [this, theme = theme] { ChooseTheme(theme); });
        action->setCheckable(true);
        action->setActionGroup(group);
    }
}

void MainWindow::BuildFrameActions() {
    Make("first", T("&First Frame"), { Qt::Key_Home }, [this] {
        m_player.Stop();
        ShowFrame(0);
    });
    Make("previous", T("&Previous Frame"), { Qt::Key_Left }, [this] { Step(-1); });
    Make("play", T("P&lay"), { Qt::Key_Space }, [this] { TogglePlay(); });
    Make("next", T("&Next Frame"), { Qt::Key_Right }, [this] { Step(1); });
    Make("last", T("L&ast Frame"), { Qt::Key_End }, [this] {
        m_player.Stop();
        ShowFrame(m_project.TheShot()->Count() - 1);
    });
    Make("textOn", T("Text &On Here"), { Qt::Key_T },
         [this] { TurnHere(!m_project.IsOnAt(m_project.Current()), m_project.Current()); });
    Make("start", T("Text On From &Here"), { Qt::Key_BracketLeft }, [this] { SetEdgeHere(false); });
    Make("end", T("Text On &Up To Here"), { Qt::Key_BracketRight }, [this] { SetEdgeHere(true); });
    Make("everywhere", T("Text On &Everywhere"), {}, [this] {
        m_project.ChangeSpans({ { 0, m_project.TheShot()->Count() - 1 } });
    });
    Make("nowhere", T("Text Off Every&where"), {}, [this] { m_project.ChangeSpans({}); });
    Action("textOn")->setCheckable(true);
    constexpr std::pair<const char*, Glyph> kIcons[] { { "first", Glyph::kFirst },
                                                       { "previous", Glyph::kPrevious },
                                                       { "play", Glyph::kPlay },
                                                       { "next", Glyph::kNext },
                                                       { "last", Glyph::kLast } };
    for (auto const& [name, glyph] : kIcons)
        Action(name)->setIcon(MakeIcon(glyph));
    // Keys without Control belong to whatever has the keyboard: these are only for the frame and the
    // timeline.
    for (auto const* const name :
         { "first", "previous", "play", "next", "last", "textOn", "start", "end" })
        Action(name)->setShortcutContext(Qt::WidgetShortcut);
}

void MainWindow::BuildBody() {
    auto* const body = new QWidget(this);
    m_messages = new MessageBar(body);
    m_view = new FrameView(body);
    m_transport = new Transport(
        { Action("first"), Action("previous"), Action("play"), Action("next"), Action("last") },
        { Action("textOn"), Action("fit"), Action("actual") }, body);
    m_timeline = new Timeline(body);
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
    for (auto const* const name :
         { "first", "previous", "play", "next", "last", "textOn", "start", "end" }) {
        m_view->addAction(Action(name));
        m_timeline->addAction(Action(name));
    }
    m_panel = new EffectPanel(this);
    m_strings = new StringsPanel(this);
    auto* const area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(m_strings);
    resizeDocks({ AddDock(T("Text"), QStringLiteral("effectDock"), m_panel),
                  AddDock(T("Information Strings"), QStringLiteral("stringsDock"), area) },
                { 2, 5 }, Qt::Vertical);
}

QDockWidget* MainWindow::AddDock(const QString& title, const QString& name, QWidget* content) {
    auto* const dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setAccessibleName(title);
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
    content->setMinimumWidth(280);
    dock->setWidget(content);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    return dock;
}

void MainWindow::BuildMenus() {
    auto const add = [this](QMenu* menu, std::initializer_list<const char*> names) {
        for (auto const* const name : names)
            name ? menu->addAction(Action(name)) : static_cast<void>(menu->addSeparator());
    };
    auto* const file = menuBar()->addMenu(T("&File"));
    add(file, { "new", "open", "frames", "folder", "pattern" });
    m_recentMenu = file->addMenu(T("Open &Recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, [this] { FillRecentMenu(); });
    add(file, { "card", nullptr, "save", "saveAs", nullptr, "export", nullptr, "quit" });
    add(menuBar()->addMenu(T("&Edit")), { "undo", "redo" });
    auto* const frame = menuBar()->addMenu(T("F&rame"));
    add(frame, { "play", nullptr, "first", "previous", "next", "last", nullptr, "textOn", "start",
                 "end", "everywhere", "nowhere" });
    auto* const view = menuBar()->addMenu(T("&View"));
    add(view, { "fit", "actual", "zoomIn", "zoomOut", nullptr });
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
    for (auto const* const name : { "frames", "save", "", "undo", "redo", "", "export" })
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
    auto const preferences =
        std::make_unique<QSettings>(QStringLiteral("telop"), QStringLiteral("studio"));
    restoreGeometry(preferences->value("window/geometry").toByteArray());
    restoreState(preferences->value("window/state").toByteArray());
    auto const theme = std::clamp(preferences->value("window/theme", 0).toInt(), 0, 2);
    Action(QStringLiteral("theme%1").arg(theme))->setChecked(true);
    SetTheme(static_cast<Theme>(theme));
}

void MainWindow::ChooseTheme(Theme theme) {
    Preferences().setValue("window/theme", static_cast<int>(theme));
    SetTheme(theme);
    m_messages->FollowPalette();
}

void MainWindow::UpdateActions() {
    bool const free = !m_modal;
    auto& stack = m_project.Undo();
    for (auto* const action : findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
        action->setEnabled(free);
    Action("undo")->setText(stack.canUndo() ? T("&Undo %1").arg(stack.undoText()) : T("&Undo"));
    Action("redo")->setText(stack.canRedo() ? T("&Redo %1").arg(stack.redoText()) : T("&Redo"));
    Action("undo")->setIconText(T("Undo"));
    Action("redo")->setIconText(T("Redo"));
    Action("undo")->setEnabled(free && stack.canUndo());
    Action("redo")->setEnabled(free && stack.canRedo());
    Action("export")->setEnabled(free && m_project.Effect() && !m_exporter);
    // These may change the encoding of the texts that an export draws.
    for (auto const* const action : { "new", "open" })
        Action(action)->setEnabled(free && !m_exporter);
    Action("textOn")->setChecked(m_project.IsOnAt(m_project.Current()));
    Action("play")->setIcon(MakeIcon(m_player.IsPlaying() ? Glyph::kPause : Glyph::kPlay));
    Action("play")->setText(m_player.IsPlaying() ? T("&Pause") : T("P&lay"));
}

// Frames and ranges

void MainWindow::Step(std::ptrdiff_t by) {
    m_player.Stop();
    auto const last = static_cast<std::ptrdiff_t>(m_project.TheShot()->Count()) - 1;
    auto const to = static_cast<std::ptrdiff_t>(m_project.Current()) + by;
    ShowFrame(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(to, 0, last)));
}

void MainWindow::TogglePlay() {
    if (m_player.IsPlaying())
        m_player.Stop();
    else if (m_project.TheShot()->Count() > 1)
        m_player.Start(m_project.Current(), m_project.TheShot()->Count());
}

void MainWindow::TurnHere(bool on, std::size_t index) {
    auto const spans = m_project.Spans();
    m_project.ChangeSpans(on ? TurnOn(spans, { index, index }) : TurnOff(spans, { index, index }));
    UpdateActions();
}

// The stretch around the frame, else the next one on that side, begins or ends here.
void MainWindow::SetEdgeHere(bool end) {
    auto const spans = m_project.Spans();
    auto const here = m_project.Current();
    OnSpan span { here, here };
    for (auto const& known : spans) {
        if (!end && known.last >= here) {
            span.last = known.last;
            break;
        }
        if (end && known.first <= here)
            span.first = known.first;
    }
    if (IsOn(spans, here)) {
        auto const around = spans[SpanAt(spans, here)];
        m_project.ChangeSpans(TurnOn(TurnOff(spans, around), span));
    } else {
        m_project.ChangeSpans(TurnOn(spans, span));
    }
}

void MainWindow::TimelineMenu(std::size_t index, QPoint global) {
    QMenu menu(this);
    bool const on = m_project.IsOnAt(index);
    auto* const turnOn =
        menu.addAction(T("Text On Here"), this, [this, index] { TurnHere(true, index); });
    auto* const turnOff =
        menu.addAction(T("Text Off Here"), this, [this, index] { TurnHere(false, index); });
    turnOn->setEnabled(!on);
    turnOff->setEnabled(on);
    if (on)
        menu.addAction(T("Text Off in This Whole Range"), this, [this, index] {
            auto const spans = m_project.Spans();
            m_project.ChangeSpans(TurnOff(spans, spans[SpanAt(spans, index)]));
        });
    menu.addSeparator();
    menu.addAction(Action("everywhere"));
    menu.addAction(Action("nowhere"));
    menu.exec(global);
}

} // namespace studio
