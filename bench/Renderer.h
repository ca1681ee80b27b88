// SPDX-License-Identifier: BSD-3-Clause
// One way of putting a text onto a frame. The measurements and the sheet that shows the results both
// go through this.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "Cases.h"
#include "host/Image.h"

namespace bench {

class Renderer {
public:
    Renderer() = default;
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;
    virtual ~Renderer() noexcept(false) = default; // a host may throw from what it takes back

    // Draws the text with this counter onto the frame that the renderer was made for. What does not
    // depend on the counter was prepared when it was made, as a good program would.
    virtual void Draw(std::uint32_t counter) = 0;
};

// Throws std::runtime_error with the reason when the renderer cannot be set up. frame outlives the
// result, which one thread uses.
using MakeRenderer = std::unique_ptr<Renderer> (*)(const TextCase& text, host::Image& frame,
                                                   Content content);

struct RendererEntry {
    const char* name; // in the names of the measurements
    MakeRenderer make;
    bool changes;   // can draw a text that changes
    bool sixteen;   // can draw on 16-bit channels
    bool drawsText; // false for what only carries a frame along
};
std::span<const RendererEntry> Renderers();

// DoFilter of the plug-in's bundle.
std::unique_ptr<Renderer> MakeEffect(const TextCase& text, host::Image& frame, Content content);
// Only the blending of a ready picture.
std::unique_ptr<Renderer> MakeBlend(const TextCase& text, host::Image& frame, Content content);
// Pango lays the text out each time, Cairo draws it.
std::unique_ptr<Renderer> MakeCairo(const TextCase& text, host::Image& frame, Content content);
// The same with one layout that is kept.
std::unique_ptr<Renderer> MakeCairoKept(const TextCase& text, host::Image& frame, Content content);
// QPainter::drawText.
std::unique_ptr<Renderer> MakeQt(const TextCase& text, host::Image& frame, Content content);
// FFmpeg's drawtext in a filter graph.
std::unique_ptr<Renderer> MakeDrawtext(const TextCase& text, host::Image& frame, Content content);
// A filter graph that does nothing: what drawtext costs is beyond this.
std::unique_ptr<Renderer> MakeNullGraph(const TextCase& text, host::Image& frame, Content content);

struct PictureSize {
    int width, height;
};
// The rectangle that the effect's text covers.
PictureSize TextRectangle(const TextCase& text);

} // namespace bench
