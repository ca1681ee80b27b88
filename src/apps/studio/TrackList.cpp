// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/TrackList.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>

#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"
#include "apps/studio/TrackEdits.h"

namespace studio {

namespace {

enum Column { kEye, kLock, kName, kColumns };
constexpr int kIconColumn = 28; // pixels

void SetSwitch(QTreeWidgetItem& row, Column column, const char* icon, const QString& state) {
    row.setIcon(column, MakeIcon(QString::fromLatin1(icon)));
    row.setToolTip(column, state);
    row.setData(column, Qt::AccessibleTextRole, state);
}

} // namespace

TrackList::TrackList(QWidget* parent) : QTreeWidget(parent) {
    setAccessibleName(T("Tracks"));
    setColumnCount(kColumns);
    header()->hide();
    header()->setMinimumSectionSize(kIconColumn);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->resizeSection(kEye, kIconColumn);
    header()->resizeSection(kLock, kIconColumn);
    header()->setStretchLastSection(true);
    setIndentation(0);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setIconSize({ 18, 18 });
    setTextElideMode(Qt::ElideRight);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* row) {
        if (row)
            onSelected(TrackOf(indexOfTopLevelItem(row)));
    });
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* row, int column) {
        if (column == kName)
            onRenamed(TrackOf(indexOfTopLevelItem(row)), row->text(kName));
    });
    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* row, int column) {
        const auto& toggle = column == kEye ? onEye : onLock;
        if (column != kName)
            toggle(TrackOf(indexOfTopLevelItem(row)));
    });
}

void TrackList::SetTracks(const std::vector<host::Track>& tracks, std::size_t selected) {
    const QSignalBlocker blocker(this);
    const auto count = static_cast<int>(tracks.size());
    const bool isOther = topLevelItemCount() != count;
    while (topLevelItemCount() > count)
        delete takeTopLevelItem(0);
    while (topLevelItemCount() < count) {
        auto* const row = new QTreeWidgetItem(this);
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable |
                      Qt::ItemNeverHasChildren);
    }
    for (int i = 0; i < count; ++i) {
        const auto& track = tracks[TrackOf(i)];
        auto& row = *topLevelItem(i);
        row.setText(kName, ShownName(track));
        row.setToolTip(kName, ShownName(track));
        SetSwitch(row, kEye, track.isShown ? "shown" : "hidden",
                  track.isShown ? T("Shown") : T("Hidden"));
        SetSwitch(row, kLock, track.isLocked ? "locked" : "unlocked",
                  track.isLocked ? T("Locked") : T("Not locked"));
    }
    auto* const row = topLevelItem(static_cast<int>(TrackOf(static_cast<int>(selected))));
    if (isOther || currentItem() != row)
        setCurrentItem(row, kName, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    viewport()->update();
}

std::vector<std::size_t> TrackList::Chosen() const {
    std::vector<std::size_t> chosen;
    for (auto* const row : selectedItems())
        chosen.push_back(TrackOf(indexOfTopLevelItem(row)));
    if (chosen.empty() && currentItem())
        chosen.push_back(TrackOf(indexOfTopLevelItem(currentItem())));
    std::ranges::sort(chosen);
    return chosen;
}

void TrackList::RenameSelected() {
    if (currentItem())
        editItem(currentItem(), kName);
}

// Two clicks on an eye are two clicks.
bool TrackList::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    if (trigger == DoubleClicked && index.column() != kName)
        return false;
    return QTreeWidget::edit(index.siblingAtColumn(kName), trigger, event);
}

// Dragging

int TrackList::GapTop(int gap) const {
    if (topLevelItemCount() == 0)
        return 0;
    const auto last = visualItemRect(topLevelItem(topLevelItemCount() - 1));
    return gap < topLevelItemCount() ? visualItemRect(topLevelItem(gap)).top() : last.bottom() + 1;
}

int TrackList::GapAt(int y) const {
    int gap = 0;
    while (gap < topLevelItemCount() && (GapTop(gap) + GapTop(gap + 1)) / 2 <= y)
        ++gap;
    return gap;
}

void TrackList::mousePressEvent(QMouseEvent* event) {
    QTreeWidget::mousePressEvent(event);
    const auto index = indexAt(event->position().toPoint());
    m_held.reset();
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier &&
        index.column() == kName)
        m_held = index.row();
    m_heldAt = event->position().toPoint();
}

void TrackList::mouseMoveEvent(QMouseEvent* event) {
    if (!m_held)
        return QTreeWidget::mouseMoveEvent(event);
    const auto at = event->position().toPoint();
    if (!m_gap && (at - m_heldAt).manhattanLength() < QApplication::startDragDistance())
        return;
    m_gap = GapAt(at.y());
    setCursor(Qt::ClosedHandCursor);
    scrollTo(indexAt({ at.x(), std::clamp(at.y(), 0, viewport()->height() - 1) }));
    viewport()->update();
}

void TrackList::mouseReleaseEvent(QMouseEvent* event) {
    const auto held = m_held;
    const auto gap = m_gap;
    EndDrag();
    if (!held || !gap)
        return QTreeWidget::mouseReleaseEvent(event);
    setState(NoState);
    // Without the row itself, those below it stand one higher.
    const int to = *gap > *held ? *gap - 1 : *gap;
    if (to != *held)
        onMoved(TrackOf(*held), TrackOf(to));
}

void TrackList::keyPressEvent(QKeyEvent* event) {
    if (m_gap && event->key() == Qt::Key_Escape)
        return EndDrag();
    QTreeWidget::keyPressEvent(event);
}

void TrackList::EndDrag() {
    m_held.reset();
    if (!std::exchange(m_gap, std::nullopt))
        return;
    unsetCursor();
    viewport()->update();
}

void TrackList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (!m_gap)
        return;
    QPainter painter(viewport());
    const auto y = std::clamp(GapTop(*m_gap), 1, viewport()->height() - 2);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawLine(0, y, viewport()->width(), y);
}

} // namespace studio
