// SPDX-License-Identifier: BSD-3-Clause
// Text by Qt's painter on a QImage over the frame. Needs a QGuiApplication.
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include "Renderer.h"

namespace bench {

namespace {

QFont FontOf(const TextCase& text) {
    QFont font(QString::fromUtf8(text.family));
    font.setPixelSize(text.sizePx);
    return font;
}

class QtRenderer : public Renderer {
public:
    QtRenderer(const TextCase& text, host::Image& frame)
        : m_case(text), m_text(text.text), m_string(QString::fromStdString(m_text.Bytes())),
          m_image(frame.Bytes().data(), frame.Width(), frame.Height(), frame.RowBytes(),
                  frame.Format().depth == 64 ? QImage::Format_RGBX64 : QImage::Format_RGB32),
          m_font(FontOf(text)), m_metrics(m_font) {}

    void Draw(std::uint32_t counter) override {
        if (m_text.Set(counter))
            m_string = QString::fromStdString(m_text.Bytes());
        const int alpha = m_case.opacity * 255 / 100;
        QPainter painter(&m_image);
        painter.setFont(m_font);
        if (m_case.box)
            painter.fillRect(kLeft, kTop, m_metrics.horizontalAdvance(m_string), m_metrics.height(),
                             QColor(0, 0, 0, alpha));
        painter.setPen(QColor(255, 255, 255, alpha));
        painter.drawText(QRect(kLeft, kTop, m_image.width(), m_image.height()),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, m_string);
    }

private:
    const TextCase& m_case;
    CountedText m_text;
    QString m_string;
    QImage m_image;
    QFont m_font;
    QFontMetrics m_metrics;
};

} // namespace

std::unique_ptr<Renderer> MakeQt(const TextCase& text, host::Image& frame, Content) {
    return std::make_unique<QtRenderer>(text, frame);
}

} // namespace bench
