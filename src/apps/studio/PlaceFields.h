// SPDX-License-Identifier: BSD-3-Clause
// Where a track's text stands and how large it is, as fields: free at x and y, or anchored to a place
// of an area with margins, which may be per cent; and sizes for frames of one height.
#pragma once

#include <functional>

#include <QWidget>

#include "host/document/Track.h"

class QComboBox;
class QLabel;
class QSpinBox;

namespace studio {

class LengthField;

class PlaceFields : public QWidget {
public:
    explicit PlaceFields(QWidget* parent = nullptr);

    // A locked one is shown and cannot be changed.
    void SetTrack(const host::Track& track);

    // The user changed the place, or the size. track is what it became.
    std::function<void(const host::Track& track)> onPlace = [](auto&) {};
    std::function<void(const host::Track& track)> onSize = [](auto&) {};

private:
    void Arrange();
    void Read();

    host::Track m_track;
    QComboBox* m_place;
    QComboBox* m_area;
    QLabel* m_lengths;
    LengthField* m_x;
    LengthField* m_y;
    QSpinBox* m_size;
    QSpinBox* m_reference;
};

} // namespace studio
