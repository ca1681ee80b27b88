// SPDX-License-Identifier: BSD-3-Clause
// The least that a text can cost: the blending of its picture, which is ready, into the frame.
#include "ReadyPicture.h"
#include "Renderer.h"
#include "host/Tables.h"
#include "render/PIOffscreen.h"

namespace bench {

namespace {

class BlendRenderer : public Renderer {
public:
    BlendRenderer(const TextCase& text, host::Image& frame)
        : m_picture(text), m_info(m_picture.Info()),
          m_frame(&host::ObjectTable(), &host::OffscreenTable(host::LateEntries::kPresent),
                  frame.Ref(), 0) {
        m_params.crText = 0x00FFFFFF;
        m_params.nOpacity = text.opacity;
        m_params.dwFlags = text.box ? TEXT_BOX : 0;
    }

    void Draw(std::uint32_t) override {
        CTextRenderer::CopyTextStringImage(&m_frame, &m_info, &m_params, kLeft, kTop);
    }

private:
    ReadyPicture m_picture;
    _RTEXTIMAGE_INFO m_info;
    _TEXTPARAM m_params {};
    PIOffscreen m_frame;
};

} // namespace

std::unique_ptr<Renderer> MakeBlend(const TextCase& text, host::Image& frame, Content) {
    return std::make_unique<BlendRenderer>(text, frame);
}

PictureSize TextRectangle(const TextCase& text) {
    const ReadyPicture picture(text);
    return { picture.Info().width, picture.Info().height };
}

} // namespace bench
