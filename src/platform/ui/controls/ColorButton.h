// SPDX-License-Identifier: BSD-3-Clause
// A push button that shows a colour in place of a text.
#pragma once

#include <QColor>
#include <QPushButton>

namespace platform {

class ColorButton : public QPushButton {
public:
    explicit ColorButton(QWidget* parent);

    QColor Color() const { return m_color; }
    void SetColor(const QColor& color);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color { Qt::black };
};

} // namespace platform
