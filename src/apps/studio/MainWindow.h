// SPDX-License-Identifier: BSD-3-Clause
// The program's window: frame, timeline, the plug-in's panel and the information strings. Shows what the
// document and the plug-in's dialogs make, and steps, plays, turns the text on and exports.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QKeySequence>
#include <QMainWindow>

#include "apps/studio/Compositor.h"
#include "apps/studio/DocumentSession.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/Player.h"
#include "apps/studio/PluginSession.h"
#include "apps/studio/Style.h"
#include "host/jobs/DocumentExport.h"

class QDockWidget;
class QLabel;
class QMenu;

namespace studio {

class CueEditor;
class CueExchange;
class ExportBar;
class FrameView;
class StringsPanel;
class Timeline;
class TracksPanel;
class Transport;

class MainWindow : public QMainWindow {
public:
    MainWindow();
    ~MainWindow() override;

    void ShowFrame(std::size_t index);
    void StartExport(const host::ExportOptions& options);
    // True when nothing is left to compose, and the window shows what it should.
    bool IsSettled() const { return m_shownSerial == m_serial; }

    DocumentSession& Document() { return m_document; }
    Project& TheProject() { return m_project; }
    PluginSession& Plugin() { return *m_plugin; }
    FrameView& View() { return *m_view; }
    Timeline& TheTimeline() { return *m_timeline; }
    CueExchange& CueFiles() { return *m_cueFiles; }
    TracksPanel& Tracks() { return *m_tracks; }
    StringsPanel& Strings() { return *m_strings; }
    MessageBar& Messages() { return *m_messages; }
    ExportBar& Exports() { return *m_exportBar; }
    // By its object name, such as "undo"; null for an unknown one.
    QAction* Action(const QString& name) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Making the window
    void BuildFileActions();
    void BuildEditActions();
    void BuildViewActions();
    void BuildFrameActions();
    void BuildCueActions();
    void BuildPlaybackRates();
    void BuildTrackActions();
    void BuildMenus();
    void BuildToolBar();
    void BuildBody();
    void BuildStatusBar();
    QDockWidget* AddDock(const QString& title, const QString& name, QWidget* content,
                         Qt::DockWidgetArea area = Qt::RightDockWidgetArea);
    // Its icon is the one of that name, if there is one.
    QAction* Make(const QString& name, const QString& text, const QKeySequence& key,
                  std::function<void()> run);
    void Connect();
    void ConnectTracks();
    void RestoreLayout();
    void ChooseTheme(Theme theme);
    void UsePlaybackRate(const QString& name);

    // Showing
    void Refresh(); // the texts may have changed
    void Compose(); // another frame, or other texts
    void Show(const Composed& composed);
    void ShowStatus(const Composed& composed);
    void ShowTrouble(const Composed& composed);
    void ShowContent();
    void ShowTitle();
    void ShowTracks();
    void ShowShot();
    void UpdateActions();
    void Complain(const QString& text, const std::string& why);

    // Frames and ranges
    void GoTo(std::size_t index);
    void Step(std::ptrdiff_t by);
    void TogglePlay();
    void TurnHere(bool on, std::size_t index);
    void SetEdgeHere(bool end);
    void TimelineMenu(std::size_t index, QPoint global);

    // Tracks
    // A command of Edit: what has the keyboard takes its key, as a field does, or the tracks get it.
    void EditOrElse(QKeySequence::StandardKey key, const std::function<void()>& tracks);
    void DeleteTracks(const QString& step);
    void CutTracks();
    void CopyTracks();
    void PasteTracks();
    void ComplainOfMany(bool isDone);
    void ShowTexts(const Composed& composed);

    // Exporting
    void AskForExport();
    void EndExport(const QString& summary, const QStringList& failures, const QStringList& reports);

    MessageBar* m_messages;
    PluginSession* m_plugin;
    DocumentSession m_document;
    Project& m_project;

    Player m_player;
    std::shared_ptr<const host::ShotText> m_text = std::make_shared<host::ShotText>();
    std::string m_textTrouble;       // why some of the text is not in it
    std::uint64_t m_serial = 0;      // of the last request
    std::uint64_t m_shownSerial = 0; // of what is shown
    QString m_drawTrouble; // the message that the text could not be drawn, while that is so

    FrameView* m_view = nullptr;
    Transport* m_transport = nullptr;
    Timeline* m_timeline = nullptr;
    std::unique_ptr<CueEditor> m_cues;
    std::unique_ptr<CueExchange> m_cueFiles;
    ExportBar* m_exportBar = nullptr;
    TracksPanel* m_tracks = nullptr;
    StringsPanel* m_strings = nullptr;
    QMenu* m_recentMenu = nullptr;
    QLabel* m_frameStatus = nullptr;
    QLabel* m_scaleStatus = nullptr;

    std::unique_ptr<Compositor> m_compositor; // its thread uses the plug-in's effect
};

} // namespace studio
