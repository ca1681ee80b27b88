// SPDX-License-Identifier: BSD-3-Clause
// Rows of popups, drawn in the palette's colours and in measures of the font.
#include "platform/ui/menus/PopupDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include "platform/ui/menus/PopupModel.h"

namespace platform {
namespace {

int Margin(const QFontMetrics& metrics) {
    return metrics.height() / 3;
}

int TextStart(const QFontMetrics& metrics, bool checkMarks) {
    return Margin(metrics) + (checkMarks ? metrics.height() : 0);
}

void DrawSeparator(QPainter& painter, const QStyleOptionViewItem& option) {
    QColor color = option.palette.color(QPalette::Text);
    color.setAlphaF(0.3F);
    const QRect line(option.rect.left(), option.rect.center().y(), option.rect.width(), 1);
    painter.fillRect(line.adjusted(2, 0, -2, 0), color);
}

void DrawCheckMark(QPainter& painter, const QRectF& box, const QColor& color) {
    QPainterPath mark;
    mark.moveTo(box.left() + 0.2 * box.width(), box.top() + 0.55 * box.height());
    mark.lineTo(box.left() + 0.4 * box.width(), box.top() + 0.75 * box.height());
    mark.lineTo(box.left() + 0.8 * box.width(), box.top() + 0.27 * box.height());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(mark, QPen(color, box.height() / 9, Qt::SolidLine, Qt::RoundCap));
}

QColor TextColor(const QStyleOptionViewItem& option) {
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool selected = option.state & QStyle::State_Selected;
    return option.palette.color(enabled ? QPalette::Normal : QPalette::Disabled,
                                selected ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace

int PopupDelegate::WidthBesideText(const QFontMetrics& metrics, bool checkMarks) {
    return TextStart(metrics, checkMarks) + Margin(metrics);
}

void PopupDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    if (index.data(PopupModel::kSeparator).toBool())
        return DrawSeparator(*painter, option);
    const QStyle& style = option.widget ? *option.widget->style() : *QApplication::style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);

    const auto& model = static_cast<const PopupModel&>(*index.model());
    const int start = TextStart(option.fontMetrics, model.HasCheckMarks());
    const auto placed = [&](const QRect& place) {
        return QStyle::visualRect(option.direction, option.rect, place);
    };
    painter->save();
    painter->setFont(option.font);
    painter->setPen(TextColor(option));
    const QRect text = placed(option.rect.adjusted(start, 0, -Margin(option.fontMetrics), 0));
    const QString shown =
        painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, text.width());
    painter->drawText(text, Qt::TextSingleLine | Qt::AlignVCenter | Qt::AlignLeading, shown);
    if (index.data(Qt::CheckStateRole).isValid()) {
        const int side = option.fontMetrics.height();
        const QRect box(option.rect.left() + start - side, option.rect.center().y() - side / 2,
                        side, side);
        DrawCheckMark(*painter, placed(box), painter->pen().color());
    }
    painter->restore();
}

QSize PopupDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int height = option.fontMetrics.height();
    const bool separator = index.data(PopupModel::kSeparator).toBool();
    return { height, separator ? height / 2 : height + height / 3 };
}

} // namespace platform
