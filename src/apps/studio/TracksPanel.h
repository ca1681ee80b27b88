// SPDX-License-Identifier: BSD-3-Clause
// The list of tracks, buttons for it, and the fields of the selected track's place.
#pragma once

#include <optional>
#include <vector>

#include <QWidget>

#include "apps/studio/TrackEdits.h"
#include "host/jobs/FrameRenderer.h"

class QAction;

namespace studio {

class PlaceFields;
class TrackList;

class TracksPanel : public QWidget {
public:
    // The project must outlive it.
    explicit TracksPanel(Project& project, QWidget* parent = nullptr);

    // Buttons under the list, and what else its menu has. Both are the window's.
    void SetActions(const QList<QAction*>& buttons, const QList<QAction*>& others);
    // The project changed.
    void Update();
    // In the fields, while a hand moves the selected track.
    void ShowPlaceOf(const host::Track& track);
    // Where the texts stand that are shown, in a frame of this size.
    void SetPlaces(const std::vector<host::TextRect>& places, host::Extent frame);

    TrackEdits& Edits() { return m_edits; }
    TrackList& List() { return *m_list; }
    host::Extent Frame() const { return m_frame; }
    // Of the selected track's text; nothing while the shown frame has none.
    std::optional<host::PixelRect> SelectedPlace() const;

private:
    void ChangePlace(host::Track track);

    Project& m_project;
    TrackEdits m_edits;
    TrackList* m_list;
    QWidget* m_buttons;
    PlaceFields* m_fields;
    std::vector<host::TextRect> m_places;
    host::Extent m_frame;
};

} // namespace studio
