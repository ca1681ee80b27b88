// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace studio {

namespace {

// Paths are drawn in a square of 24. A line is 1.8 wide; what is filled is closed.
struct Shape {
    QPainterPath line;
    QPainterPath fill;
};

void Polyline(QPainterPath& path, std::initializer_list<QPointF> points) {
    auto const* point = points.begin();
    path.moveTo(*point);
    while (++point != points.end())
        path.lineTo(*point);
}

void Triangle(QPainterPath& path, double base, double tip) {
    Polyline(path, { { base, 5 }, { tip, 12 }, { base, 19 } });
    path.closeSubpath();
}

void Turn(QPainterPath& path, double sign) {
    auto const x = [sign](double value) { return 12 + sign * value; };
    Polyline(path, { { x(-3.5), 4.5 }, { x(-7.5), 8.5 }, { x(-3.5), 12.5 } });
    path.moveTo(x(-7.5), 8.5);
    path.lineTo(x(2.5), 8.5);
    path.cubicTo(x(10), 8.5, x(10), 19, x(2.5), 19);
    path.lineTo(x(-2), 19);
}

void Sign(Shape& shape, bool dotBelow) {
    shape.line.moveTo(12, dotBelow ? 7.2 : 11);
    shape.line.lineTo(12, dotBelow ? 13 : 16.8);
    shape.fill.addEllipse(QPointF(12, dotBelow ? 16.6 : 7.4), 1.3, 1.3);
}

void Corners(QPainterPath& path) {
    for (double const x : { 1.0, -1.0 }) {
        for (double const y : { 1.0, -1.0 })
            Polyline(path, { { 12 + x * 3.5, 12 + y * 7.5 },
                             { 12 + x * 8.5, 12 + y * 7.5 },
                             { 12 + x * 8.5, 12 + y * 3 } });
    }
}

void AddTransport(Shape& shape, Glyph glyph) {
    bool const back = glyph == Glyph::kFirst || glyph == Glyph::kPrevious;
    Triangle(shape.fill, back ? 17 : 7, back ? 8 : 16);
    if (glyph == Glyph::kFirst || glyph == Glyph::kPrevious)
        shape.fill.addRect(glyph == Glyph::kFirst ? QRectF(5, 5, 2, 14) : QRectF());
    else
        shape.fill.addRect(glyph == Glyph::kLast ? QRectF(17, 5, 2, 14) : QRectF());
}

Shape ShapeOf(Glyph glyph) {
    Shape shape;
    auto& line = shape.line;
    switch (glyph) {
    case Glyph::kOpen:
        Polyline(line, { { 3.5, 18.5 },
                         { 3.5, 5.5 },
                         { 9.5, 5.5 },
                         { 11.5, 8 },
                         { 18.5, 8 },
                         { 18.5, 10.5 } });
        Polyline(line, { { 3.5, 18.5 }, { 6.5, 10.5 }, { 21.5, 10.5 }, { 18.5, 18.5 } });
        line.closeSubpath();
        break;
    case Glyph::kSave:
        Polyline(line,
                 { { 4.5, 4.5 }, { 16.5, 4.5 }, { 19.5, 7.5 }, { 19.5, 19.5 }, { 4.5, 19.5 } });
        line.closeSubpath();
        Polyline(line, { { 8, 4.5 }, { 8, 9 }, { 15, 9 }, { 15, 4.5 } });
        Polyline(line, { { 7.5, 19.5 }, { 7.5, 13 }, { 16.5, 13 }, { 16.5, 19.5 } });
        break;
    case Glyph::kUndo:
        Turn(line, 1);
        break;
    case Glyph::kRedo:
        Turn(line, -1);
        break;
    case Glyph::kExport:
        Polyline(line, { { 12, 15 }, { 12, 3.5 } });
        Polyline(line, { { 7.5, 8 }, { 12, 3.5 }, { 16.5, 8 } });
        Polyline(line, { { 4.5, 14 }, { 4.5, 19.5 }, { 19.5, 19.5 }, { 19.5, 14 } });
        break;
    case Glyph::kPlay:
        Triangle(shape.fill, 7.5, 18.5);
        break;
    case Glyph::kPause:
        shape.fill.addRect(6.5, 5, 4, 14);
        shape.fill.addRect(13.5, 5, 4, 14);
        break;
    case Glyph::kFit:
        Corners(line);
        break;
    case Glyph::kActual:
        Polyline(line, { { 5, 9 }, { 7.5, 7 }, { 7.5, 17 } });
        Polyline(line, { { 16, 9 }, { 18.5, 7 }, { 18.5, 17 } });
        shape.fill.addEllipse(QPointF(12.6, 10), 1.2, 1.2);
        shape.fill.addEllipse(QPointF(12.6, 15), 1.2, 1.2);
        break;
    case Glyph::kInformation:
    case Glyph::kError:
        line.addEllipse(QPointF(12, 12), 9, 9);
        Sign(shape, glyph == Glyph::kError);
        break;
    case Glyph::kWarning:
        Polyline(line, { { 12, 3 }, { 22, 20 }, { 2, 20 } });
        line.closeSubpath();
        line.moveTo(12, 9.4);
        line.lineTo(12, 13.8);
        shape.fill.addEllipse(QPointF(12, 17), 1.2, 1.2);
        break;
    case Glyph::kClose:
        Polyline(line, { { 7, 7 }, { 17, 17 } });
        Polyline(line, { { 17, 7 }, { 7, 17 } });
        break;
    default:
        AddTransport(shape, glyph);
    }
    return shape;
}

class Engine : public QIconEngine {
public:
    explicit Engine(Glyph glyph) : m_glyph(glyph) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        auto const group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        auto const color = QApplication::palette().color(group, QPalette::ButtonText);
        auto const shape = ShapeOf(m_glyph);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 24.0, rect.height() / 24.0);
        painter->strokePath(shape.line,
                            QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->fillPath(shape.fill, color);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new Engine(m_glyph); }

private:
    Glyph m_glyph;
};

} // namespace

QIcon MakeIcon(Glyph glyph) {
    return QIcon(new Engine(glyph));
}

} // namespace studio
