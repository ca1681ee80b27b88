// SPDX-License-Identifier: BSD-3-Clause
// The window's part in tracks: their actions, the clipboard, and the texts that a hand moves in the frame.
#include <utility>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QTimer>

#include "apps/studio/FrameView.h"
#include "apps/studio/MainWindow.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/Preferences.h"
#include "apps/studio/Texts.h"
#include "apps/studio/Timeline.h"
#include "apps/studio/TrackList.h"
#include "apps/studio/TracksPanel.h"

namespace studio {

namespace {

tagPOINT ToPoint(QPoint point) {
    return { point.x(), point.y() };
}

} // namespace

void MainWindow::BuildTrackActions() {
    const auto selected = [this] { return m_project.Committed().selected; };
    Make("addTrack", T("&Add Track"), { "Ctrl+Shift+N" },
         [this] { ComplainOfMany(m_tracks->Edits().Add(m_tracks->Frame())); });
    Make("duplicateTrack", T("D&uplicate Track"), { "Ctrl+D" },
         [this] { ComplainOfMany(m_tracks->Edits().Duplicate(m_tracks->List().Chosen())); });
    Make("renameTrack", T("Re&name Track"), {}, [this] { m_tracks->List().RenameSelected(); });
    Make("eye", T("Show or &Hide Track"), { "Ctrl+H" },
         [this, selected] { m_tracks->Edits().ToggleShown(selected()); });
    Make("lock", T("&Lock or Unlock Track"), { "Ctrl+L" },
         [this, selected] { m_tracks->Edits().ToggleLocked(selected()); });
    Make("raiseTrack", T("Move Track &Up"), { "Ctrl+]" },
         [this, selected] { m_tracks->Edits().Reorder(selected(), selected() + 1); });
    Make("lowerTrack", T("Move Track Do&wn"), { "Ctrl+[" },
         [this, selected] { m_tracks->Edits().Reorder(selected(), selected() - 1); });
    Make("deleteTrack", T("&Delete Track"), {}, [this] { DeleteTracks(T("Delete Track")); });

    Make("cut", T("Cu&t"), QKeySequence::Cut,
         [this] { EditOrElse(QKeySequence::Cut, [this] { CutTracks(); }); });
    Make("copy", T("&Copy"), QKeySequence::Copy,
         [this] { EditOrElse(QKeySequence::Copy, [this] { CopyTracks(); }); });
    Make("paste", T("&Paste"), QKeySequence::Paste,
         [this] { EditOrElse(QKeySequence::Paste, [this] { PasteTracks(); }); });
    Make("delete", T("De&lete"), QKeySequence::Delete,
         [this] { EditOrElse(QKeySequence::Delete, [this] { DeleteTracks(T("Delete Track")); }); });
    Make("selectAll", T("Select &All"), QKeySequence::SelectAll,
         [this] { EditOrElse(QKeySequence::SelectAll, [this] { m_tracks->List().selectAll(); }); });
    // Whatever else has the keyboard may have things of its own to delete.
    Action("delete")->setShortcutContext(Qt::WidgetShortcut);

    auto* const areas = Make("safeAreas", T("&Safe Areas"), { "Ctrl+Shift+A" }, [] {});
    areas->setCheckable(true);
    connect(areas, &QAction::toggled, this, [this](bool on) {
        m_view->SetShowsAreas(on);
        Preferences().setValue("view/safeAreas", on);
    });
}

void MainWindow::ConnectTracks() {
    m_tracks->List().onSelected = [this](std::size_t track) {
        m_view->Take(track);
        m_project.Select(track);
    };
    m_view->onTaken = [this](std::optional<std::size_t> track) {
        if (track && *track != m_project.Committed().selected)
            m_project.Select(*track);
    };
    m_view->onDragged = [this](QPoint by) {
        m_player.Stop();
        const auto moved = m_tracks->Edits().Moved(ToPoint(by), m_tracks->Frame());
        m_project.Preview(moved);
        m_tracks->ShowPlaceOf(moved);
        Refresh();
    };
    m_view->onDropped = [this](QPoint by) {
        m_project.Preview({});
        if (by.isNull()) {
            m_tracks->Update();
            return Refresh();
        }
        auto& edits = m_tracks->Edits();
        edits.Change(T("Move Text"), edits.Moved(ToPoint(by), m_tracks->Frame()),
                     TrackEdits::Pieces::kOne);
    };
    m_view->onNudged = [this](QPoint by) {
        auto& edits = m_tracks->Edits();
        edits.Change(T("Move Text"), edits.Moved(ToPoint(by), m_tracks->Frame()),
                     TrackEdits::Pieces::kMany);
    };
    // The editor runs until it is closed, and not inside an event of the view.
    m_view->onOpened = [this] {
        QTimer::singleShot(0, m_plugin, [this] { m_plugin->OpenEditor(); });
    };
}

void MainWindow::ShowTexts(const Composed& composed) {
    const auto& tracks = m_project.Committed().tracks;
    std::vector<TextGrip::Text> texts;
    for (const auto& [track, rect] : composed.texts)
        if (track < tracks.size())
            texts.push_back(
                { track, QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top),
                  tracks[track].isLocked, tracks[track].anchor.area });
    m_view->SetTexts(std::move(texts));
    const auto size = composed.picture.size();
    m_tracks->SetPlaces(composed.texts, { size.width(), size.height() });
}

// Edit

void MainWindow::EditOrElse(QKeySequence::StandardKey key, const std::function<void()>& tracks) {
    auto* const focus = QApplication::focusWidget();
    const auto keys = QKeySequence(key)[0];
    const auto event = [keys](QEvent::Type type) {
        return QKeyEvent(type, keys.key(), keys.keyboardModifiers());
    };
    auto asked = event(QEvent::ShortcutOverride);
    asked.ignore();
    if (focus)
        QApplication::sendEvent(focus, &asked);
    if (!focus || !asked.isAccepted())
        return tracks();
    auto press = event(QEvent::KeyPress);
    auto release = event(QEvent::KeyRelease);
    QApplication::sendEvent(focus, &press);
    QApplication::sendEvent(focus, &release);
}

void MainWindow::DeleteTracks(const QString& step) {
    const auto count = m_project.Undo().index();
    m_tracks->Edits().Delete(m_tracks->List().Chosen(), step);
    if (m_project.Undo().index() == count)
        m_messages->Show(MessageBar::Kind::kInformation,
                         T("A locked track is not deleted. Unlock it first."));
}

void MainWindow::CopyTracks() {
    const auto text = m_tracks->Edits().Copy(m_tracks->List().Chosen());
    QApplication::clipboard()->setText(QString::fromStdString(text));
}

void MainWindow::CutTracks() {
    CopyTracks();
    DeleteTracks(T("Cut Track"));
}

void MainWindow::PasteTracks() {
    std::string why;
    if (m_tracks->Edits().Paste(QApplication::clipboard()->text().toStdString(), why))
        return;
    m_messages->Show(MessageBar::Kind::kInformation,
                     T("What is in the clipboard cannot be pasted as tracks.") + QLatin1Char('\n') +
                         QString::fromStdString(why));
}

void MainWindow::ComplainOfMany(bool isDone) {
    if (!isDone)
        m_messages->Show(
            MessageBar::Kind::kInformation,
            T("A document holds no more than %1 tracks.").arg(static_cast<int>(host::kMaxTracks)));
}

} // namespace studio
