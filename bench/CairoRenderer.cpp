// SPDX-License-Identifier: BSD-3-Clause
// Text by Pango and Cairo. The surface, the context, the font and (where it is kept) the layout live
// as long as the renderer.
#include <memory>
#include <stdexcept>

#include <pango/pangocairo.h>

#include "Renderer.h"

namespace bench {

namespace {

template <auto Free>
struct Freeing {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
using Surface = std::unique_ptr<cairo_surface_t, Freeing<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Freeing<cairo_destroy>>;
using Font = std::unique_ptr<PangoFontDescription, Freeing<pango_font_description_free>>;
using TextContext = std::unique_ptr<PangoContext, Freeing<g_object_unref>>;
using Layout = std::unique_ptr<PangoLayout, Freeing<g_object_unref>>;

enum class Keep { kNothing, kLayout };

class CairoRenderer : public Renderer {
public:
    CairoRenderer(const TextCase& text, host::Image& frame, Keep keep)
        : m_case(text), m_text(text.text),
          m_surface(cairo_image_surface_create_for_data(frame.Bytes().data(), CAIRO_FORMAT_RGB24,
                                                        frame.Width(), frame.Height(),
                                                        frame.RowBytes())),
          m_context(cairo_create(m_surface.get())), m_font(pango_font_description_new()),
          m_textContext(pango_cairo_create_context(m_context.get())) {
        if (cairo_status(m_context.get()) != CAIRO_STATUS_SUCCESS)
            throw std::runtime_error(cairo_status_to_string(cairo_status(m_context.get())));
        pango_font_description_set_family(m_font.get(), text.family);
        pango_font_description_set_absolute_size(m_font.get(), text.sizePx * PANGO_SCALE);
        if (keep == Keep::kLayout)
            m_kept = LayOut();
    }

    void Draw(std::uint32_t counter) override {
        m_text.Set(counter);
        const Layout fresh = m_kept ? nullptr : LayOut();
        Show(m_kept ? m_kept.get() : fresh.get());
    }

private:
    Layout LayOut() const {
        Layout layout(pango_layout_new(m_textContext.get()));
        pango_layout_set_font_description(layout.get(), m_font.get());
        pango_layout_set_text(layout.get(), m_text.Bytes().data(),
                              static_cast<int>(m_text.Bytes().size()));
        return layout;
    }

    void Show(PangoLayout* layout) {
        const double opacity = m_case.opacity / 100.0;
        if (m_case.box) {
            int width = 0;
            int height = 0;
            pango_layout_get_pixel_size(layout, &width, &height);
            cairo_set_source_rgba(m_context.get(), 0, 0, 0, opacity);
            cairo_rectangle(m_context.get(), kLeft, kTop, width, height);
            cairo_fill(m_context.get());
        }
        cairo_set_source_rgba(m_context.get(), 1, 1, 1, opacity);
        cairo_move_to(m_context.get(), kLeft, kTop);
        pango_cairo_show_layout(m_context.get(), layout);
    }

    const TextCase& m_case;
    CountedText m_text;
    Surface m_surface;
    Context m_context;
    Font m_font;
    TextContext m_textContext;
    Layout m_kept;
};

} // namespace

std::unique_ptr<Renderer> MakeCairo(const TextCase& text, host::Image& frame, Content) {
    return std::make_unique<CairoRenderer>(text, frame, Keep::kNothing);
}

std::unique_ptr<Renderer> MakeCairoKept(const TextCase& text, host::Image& frame, Content) {
    return std::make_unique<CairoRenderer>(text, frame, Keep::kLayout);
}

} // namespace bench
