// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Transport.h"

#include <algorithm>

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"
#include "host/frames/FrameRanges.h"

namespace studio {

namespace {

void AddButtons(QHBoxLayout& row, const QList<QAction*>& actions) {
    for (auto* const action : actions) {
        auto* const button = new QToolButton;
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize({ 20, 20 });
        button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly
                                                           : Qt::ToolButtonIconOnly);
        if (action->menu())
            button->setPopupMode(QToolButton::InstantPopup);
        row.addWidget(button);
    }
}

int Bounded(std::int64_t number) {
    return static_cast<int>(std::clamp(number, host::kFrameMin, host::kFrameMax));
}

} // namespace

Transport::Transport(const QList<QAction*>& actions, const QList<QAction*>& more, QWidget* parent)
    : QWidget(parent), m_number(new QSpinBox(this)), m_count(new QLabel(this)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(8, 2, 8, 2);
    row->setSpacing(2);
    AddButtons(*row, actions);
    row->addSpacing(12);
    auto* const label = new QLabel(T("Fra&me"), this);
    label->setBuddy(m_number);
    row->addWidget(label);
    row->addSpacing(4);
    row->addWidget(m_number);
    row->addSpacing(6);
    row->addWidget(m_count);
    row->addStretch(1);
    AddButtons(*row, more);
    SetFaint(*m_count);
    m_count->setMinimumWidth(1); // it gives way first where there is little room
    m_number->setKeyboardTracking(false);
    m_number->setAccessibleName(T("Frame number"));
    connect(m_number, &QSpinBox::valueChanged, this, [this](int number) { onNumber(number); });
}

void Transport::SetFrames(std::span<const std::int64_t> numbers) {
    const QSignalBlocker quiet(m_number);
    m_number->setRange(Bounded(numbers.front()), Bounded(numbers.back()));
    m_count->setText(T("of %1").arg(FramesText(static_cast<qint64>(numbers.size()))));
}

void Transport::SetCurrent(std::int64_t number) {
    const QSignalBlocker quiet(m_number);
    m_number->setValue(Bounded(number));
}

} // namespace studio
