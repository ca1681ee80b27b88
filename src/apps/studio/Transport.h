// SPDX-License-Identifier: BSD-3-Clause
// The row of buttons below the frame: to the ends, step, play, and the number of the frame to go to.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include <QWidget>

class QAction;
class QLabel;
class QSpinBox;

namespace studio {

class Transport : public QWidget {
public:
    // The actions are shown as buttons in their order.
    Transport(const QList<QAction*>& actions, const QList<QAction*>& more,
              QWidget* parent = nullptr);

    void SetFrames(std::span<const std::int64_t> numbers);
    void SetCurrent(std::int64_t number);
    QSpinBox& Field() { return *m_number; }

    std::function<void(std::int64_t number)> onNumber = [](std::int64_t) {}; // typed or stepped to

private:
    QSpinBox* m_number;
    QLabel* m_count;
};

} // namespace studio
