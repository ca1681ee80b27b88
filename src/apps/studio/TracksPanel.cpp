// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/TracksPanel.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QBoxLayout>
#include <QToolButton>

#include "apps/studio/PlaceFields.h"
#include "apps/studio/Texts.h"
#include "apps/studio/TrackList.h"

namespace studio {

TracksPanel::TracksPanel(Project& project, QWidget* parent)
    : QWidget(parent), m_project(project), m_edits(project), m_list(new TrackList(this)),
      m_buttons(new QWidget(this)), m_fields(new PlaceFields(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_list, 1);
    column->addWidget(m_buttons);
    column->addWidget(m_fields);
    auto* const row = new QHBoxLayout(m_buttons);
    row->setContentsMargins(4, 2, 4, 2);
    row->setSpacing(2);
    m_list->onRenamed = [this](std::size_t track, const QString& name) {
        m_edits.Rename(track, name);
    };
    m_list->onEye = [this](std::size_t track) { m_edits.ToggleShown(track); };
    m_list->onLock = [this](std::size_t track) { m_edits.ToggleLocked(track); };
    m_list->onMoved = [this](std::size_t from, std::size_t to) { m_edits.Reorder(from, to); };
    m_fields->onPlace = [this](const host::Track& track) { ChangePlace(track); };
    m_fields->onSize = [this](const host::Track& track) {
        m_edits.Change(T("Change Size"), track, TrackEdits::Pieces::kMany);
    };
}

void TracksPanel::SetActions(const QList<QAction*>& buttons, const QList<QAction*>& others) {
    auto* const row = static_cast<QBoxLayout*>(m_buttons->layout());
    for (auto* const action : buttons) {
        auto* const button = new QToolButton(m_buttons);
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        button->setIconSize({ 18, 18 });
        button->setFocusPolicy(Qt::TabFocus);
        row->addWidget(button);
    }
    row->addStretch(1);
    m_list->addActions(buttons);
    m_list->addActions(others);
}

void TracksPanel::Update() {
    const auto& content = m_project.Committed();
    m_list->SetTracks(content.tracks, content.selected);
    m_fields->SetTrack(content.Selected());
}

void TracksPanel::ShowPlaceOf(const host::Track& track) {
    m_fields->SetTrack(track);
}

void TracksPanel::SetPlaces(const std::vector<host::TextRect>& places, host::Extent frame) {
    m_places = places;
    m_frame = frame;
}

std::optional<host::PixelRect> TracksPanel::SelectedPlace() const {
    const auto found =
        std::ranges::find(m_places, m_project.Committed().selected, &host::TextRect::track);
    return found == m_places.end() ? std::nullopt : std::optional(found->rect);
}

// A text that is let go stays where it is seen.
void TracksPanel::ChangePlace(host::Track track) {
    const auto& before = m_project.Committed().Selected();
    const auto place = SelectedPlace();
    const bool isLetGo = track.anchor.place == host::AnchorPlace::kNone &&
                         before.anchor.place != host::AnchorPlace::kNone;
    if (isLetGo && place) {
        track.settings.ptPos = {};
        host::MoveBy(track, { place->left, place->top }, m_frame);
    }
    m_edits.Change(T("Change Place"), std::move(track), TrackEdits::Pieces::kMany);
}

} // namespace studio
