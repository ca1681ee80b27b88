// SPDX-License-Identifier: BSD-3-Clause
#include "Sheets.h"

#include <cstdio>
#include <stdexcept>

#include <QDir>
#include <QImage>
#include <QPainter>

#include "Frames.h"
#include "Renderer.h"

namespace bench {

namespace {

constexpr int kStripHeight = 270;

// Draws the text as it looks after some frames.
QImage Strip(const RendererEntry& renderer, const TextCase& text, Content content, int depth) {
    const auto frame = host::Image::Make(1280, 720, depth == 64 ? kFrame16 : kFrame8);
    PaintBackground(*frame);
    renderer.make(text, *frame, content)->Draw(kStillCounter);
    const auto format = depth == 64 ? QImage::Format_RGBX64 : QImage::Format_RGB32;
    return QImage(frame->Bytes().data(), frame->Width(), kStripHeight, frame->RowBytes(), format)
        .convertToFormat(QImage::Format_RGB32)
        .copy(); // pixels of its own: the frame ends here
}

QImage Sheet(const TextCase& text) {
    std::vector<QImage> strips;
    QStringList labels;
    for (const RendererEntry& renderer : Renderers()) {
        for (int depth : { 32, 64 }) {
            if (!renderer.drawsText || (depth == 64 && !renderer.sixteen))
                continue;
            strips.push_back(Strip(renderer, text, Content::kChanging, depth));
            labels << QString("%1, %2 bits").arg(renderer.name).arg(depth / 4);
        }
    }
    QImage sheet(1280, kStripHeight * static_cast<int>(strips.size()), QImage::Format_RGB32);
    QPainter painter(&sheet);
    for (int i = 0; i < static_cast<int>(strips.size()); ++i) {
        painter.drawImage(0, i * kStripHeight, strips[static_cast<std::size_t>(i)]);
        painter.drawText(kLeft, i * kStripHeight + kTop - 12, labels[i]);
    }
    return sheet;
}

} // namespace

bool WriteSheets(const std::string& folder) {
    try {
        const QDir dir(QString::fromStdString(folder));
        dir.mkpath(".");
        for (const TextCase& text : Cases()) {
            const QString file = dir.filePath(QString(text.name) + ".png");
            if (!Sheet(text).save(file))
                throw std::runtime_error("cannot write " + file.toStdString());
        }
        return true;
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "telop-bench: %s\n", error.what());
        return false;
    }
}

} // namespace bench
