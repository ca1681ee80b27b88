// SPDX-License-Identifier: BSD-3-Clause
// The program's window: frame, timeline, the plug-in's panel and the information strings, and all that
// is done with them. Takes part in the plug-in's dialogs as their host.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include "apps/studio/Compositor.h"
#include "apps/studio/ErrorEvents.h"
#include "apps/studio/Exporter.h"
#include "apps/studio/Player.h"
#include "apps/studio/Project.h"
#include "apps/studio/Recent.h"
#include "apps/studio/Style.h"
#include "host/Dialog.h"
#include "host/Tables.h"
#include "host/document/Autosave.h"
#include "platform/TextContext.h"

class QActionGroup;
class QDockWidget;
class QLabel;
class QMenu;

namespace studio {

class EffectPanel;
class ExportBar;
class FrameView;
class MessageBar;
class StringsPanel;
class Timeline;
class Transport;

// What the user answers to a question about unsaved changes, or about a copy that a crash left.
enum class Answer { kSave, kDiscard, kCancel };
enum class RestoreAnswer { kRestore, kDiscard, kLater };

class MainWindow : public QMainWindow, private host::FrontEnd {
public:
    MainWindow();
    ~MainWindow() override;

    // Documents, pictures, folders and patterns, as on the command line. False after a message.
    bool OpenFiles(const std::vector<std::string>& files);
    bool OpenDocument(const std::string& file);
    bool OpenFrames(const std::string& input);
    void NewDocument(); // asks nothing
    bool SaveDocument(const std::string& file);
    // Empty while it has none.
    const std::string& DocumentFile() const { return m_file; }
    // Documents that a run of the program which did not end well left behind are offered.
    void OfferRestore(const std::filesystem::path& folder = host::AutosaveFolder());
    // Keeps a copy of unsaved changes; the window does it every 30 seconds.
    void AutosaveNow();

    void ShowFrame(std::size_t index);
    void StartExport(const host::ExportOptions& options);
    // True when nothing is left to compose, and the window shows what it should.
    bool IsSettled() const { return m_shownSerial == m_serial; }

    Project& TheProject() { return m_project; }
    FrameView& View() { return *m_view; }
    Timeline& TheTimeline() { return *m_timeline; }
    StringsPanel& Strings() { return *m_strings; }
    EffectPanel& Panel() { return *m_panel; }
    MessageBar& Messages() { return *m_messages; }
    ExportBar& Exports() { return *m_exportBar; }
    // By its object name, such as "undo"; null for an unknown one.
    QAction* Action(const QString& name) const;

    // Who answers these questions; empty: the user.
    std::function<Answer()> onUnsaved;
    std::function<RestoreAnswer(const host::LeftCopy& copy)> onLeftCopy;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // The plug-in's dialogs
    std::int32_t ParametersChanged(EPIHandleRef fixedParam) override;
    std::int32_t Option(double value) override;
    std::int32_t ModalOpens(EPIWindowRef window) override;
    std::int32_t ModalEnds(EPIWindowRef window) override;
    void FileFailed(const std::string& why) override;
    void FollowModal();
    host::Dialog::Frame DialogFrame();
    void OpenPanel();

    // Making the window
    static std::unique_ptr<host::Effect> MakeEffect(std::string& why);
    void BuildActions();
    void BuildFileActions();
    void BuildEditActions();
    void BuildViewActions();
    void BuildFrameActions();
    void BuildMenus();
    void BuildToolBar();
    void BuildBody();
    void BuildStatusBar();
    QDockWidget* AddDock(const QString& title, const QString& name, QWidget* content);
    QAction* Make(const QString& name, const QString& text, const QKeySequence& key,
                  std::function<void()> run);
    void Connect();
    void RestoreLayout();
    void ChooseTheme(Theme theme);

    // Showing
    void StartCompositor();
    void Refresh();
    void Show(const Composed& composed);
    void ShowStatus(const Composed& composed);
    void ShowContent();
    void ShowTitle();
    void ShowShot();
    void ShowReports();
    void UpdateActions();

    // Frames and ranges
    void Step(std::ptrdiff_t by);
    void TogglePlay();
    void TurnHere(bool on, std::size_t index);
    void SetEdgeHere(bool end);
    void TimelineMenu(std::size_t index, QPoint global);

    // Files
    bool MayDiscard();
    bool Save();
    bool SaveAs();
    void AskForDocument();
    void AskForFrames();
    void AskForFolder();
    void AskForPattern();
    void OpenPicked(const std::string& file);
    void FillRecentMenu();
    void SetFile(const std::string& file);
    void UseEncoding(const platform::TextEncoding& encoding);
    void TakeShot(std::shared_ptr<const Shot> shot);
    void TakeDocument(const host::Document& document, const std::string& file);
    bool Restore(host::LeftCopy& copy);
    Answer AskUnsaved();
    RestoreAnswer AskLeftCopy(const host::LeftCopy& copy);
    void Complain(const QString& text, const std::string& why);

    // Exporting
    void AskForExport();
    void ShowExport();
    void EndExport();
    void ShowFailures(const QString& summary, const QString& failures);

    // Of new documents.
    const platform::TextEncoding m_encoding = platform::TextContext::Current().Encoding();
    std::shared_ptr<platform::TextContext>
        m_context = // the document's, and this thread's meanwhile
        std::make_shared<platform::TextContext>(m_encoding);
    std::optional<platform::TextScope> m_scope { std::in_place, *m_context };
    std::string m_pluginTrouble; // why there is no effect
    Project m_project;
    std::string m_file;
    Recent m_recentDocuments { QStringLiteral("recent/documents") };
    Recent m_recentFrames { QStringLiteral("recent/frames") };
    std::unique_ptr<host::Autosave> m_autosave;
    QTimer m_autosaveTimer;

    Player m_player;
    std::shared_ptr<host::Frame> m_background; // of the frame that is shown; lent to the panel
    std::array<std::string, 4> m_dialogStrings;
    std::uint64_t m_serial = 0;      // of the last request
    std::uint64_t m_shownSerial = 0; // of what is shown
    std::size_t m_reportsShown = 0;

    // The plug-in's modal window, while one runs.
    EPIWindowRef m_modal = nullptr;
    QTimer m_modalTimer;
    _TEXTPARAM m_modalShown {};

    MessageBar* m_messages = nullptr;
    FrameView* m_view = nullptr;
    Transport* m_transport = nullptr;
    Timeline* m_timeline = nullptr;
    ExportBar* m_exportBar = nullptr;
    EffectPanel* m_panel = nullptr;
    StringsPanel* m_strings = nullptr;
    QMenu* m_recentMenu = nullptr;
    QMenu* m_dockMenu = nullptr;
    QLabel* m_frameStatus = nullptr;
    QLabel* m_scaleStatus = nullptr;

    ErrorEvents m_errors;
    QTimer m_exportTimer;
    std::unique_ptr<Exporter> m_exporter;
    std::unique_ptr<Compositor> m_compositor; // last: its thread uses the project's effect
};

} // namespace studio
