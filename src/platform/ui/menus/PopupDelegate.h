// SPDX-License-Identifier: BSD-3-Clause
// Draws the rows of an open popup, with check marks and separators. The size of a row depends on its
// kind alone, so that long menus open at once.
#pragma once

#include <QStyledItemDelegate>

namespace platform {

class PopupDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // What a row's text has beside it, both sides together.
    static int WidthBesideText(const QFontMetrics& metrics, bool checkMarks);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace platform
