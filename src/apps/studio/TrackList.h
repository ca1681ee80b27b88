// SPDX-License-Identifier: BSD-3-Clause
// The tracks as rows with an eye, a lock and a name. What is drawn last lies over the others in the frame
// and stands over them here: on top. A row is dragged to another place, renamed by F2 or a double
// click, and several may be chosen, one of which is the selected track.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include <QTreeWidget>

#include "host/document/Track.h"

namespace studio {

class TrackList : public QTreeWidget {
public:
    explicit TrackList(QWidget* parent = nullptr);

    void SetTracks(const std::vector<host::Track>& tracks, std::size_t selected);
    // Indices of tracks, ascending; the selected one when no row is chosen.
    std::vector<std::size_t> Chosen() const;
    void RenameSelected();

    // By the user. Indices are those of tracks.
    std::function<void(std::size_t track)> onSelected = [](auto) {};
    std::function<void(std::size_t track, const QString& name)> onRenamed = [](auto, auto&) {};
    std::function<void(std::size_t track)> onEye = [](auto) {};
    std::function<void(std::size_t track)> onLock = [](auto) {};
    std::function<void(std::size_t from, std::size_t to)> onMoved = [](auto, auto) {};

    QSize sizeHint() const override { return { 220, 160 }; }
    QSize minimumSizeHint() const override { return { 120, 80 }; }

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    // Rows run against the tracks; the same way back.
    std::size_t TrackOf(int row) const {
        return static_cast<std::size_t>(topLevelItemCount() - 1 - row);
    }
    // Between two rows, from 0 (over the first) on.
    int GapAt(int y) const;
    int GapTop(int gap) const;
    void EndDrag();

    std::optional<int> m_held; // the row that the mouse went down on
    QPoint m_heldAt;
    std::optional<int> m_gap; // where the row goes, while it is dragged
};

} // namespace studio
