// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Compositor.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace studio {

namespace {

constexpr std::size_t kReadAhead = 8; // frames

// A picture that paints fast: RGB32 of frames that are opaque throughout by their layout,
// premultiplied ARGB32 of others. Of 16 bits the nearest value.
QImage ToPicture(const host::Image& image) {
    // Frames are read into one of these three layouts.
    const bool opaque = image.Format() == host::kRgb24;
    const auto format = opaque                            ? QImage::Format_RGB888
                        : image.Format() == host::kRgba32 ? QImage::Format_RGBA8888
                                                          : QImage::Format_RGBA64;
    const QImage lent(image.Bytes().data(), image.Width(), image.Height(), image.RowBytes(),
                      format);
    return lent.convertToFormat(opaque ? QImage::Format_RGB32
                                       : QImage::Format_ARGB32_Premultiplied);
}

// False: there is no memory.
bool CopyFrame(const host::Frame& from, host::Frame& to) {
    const auto& image = *from.image;
    if (!host::PrepareImage(to, image.Width(), image.Height(), image.Format()))
        return false;
    for (int y = 0; y < image.Height(); ++y)
        std::ranges::copy(image.Row(y), to.image->Row(y).begin());
    return true;
}

} // namespace

Compositor::Compositor(const host::Effect* effect, Deliver deliver)
    : m_effect(effect), m_deliver(std::move(deliver)), m_thread([this] { Run(); }) {}

Compositor::~Compositor() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Compositor::Request(ComposeRequest request) {
    {
        const std::lock_guard lock(m_mutex);
        m_request = std::move(request);
    }
    m_changed.notify_all();
}

void Compositor::Run() {
    while (const auto request = Next())
        QMetaObject::invokeMethod(
            &m_receiver, [this, composed = Compose(*request)] { m_deliver(composed); },
            Qt::QueuedConnection);
}

std::optional<ComposeRequest> Compositor::Next() {
    std::size_t ahead = 0;
    std::unique_lock lock(m_mutex);
    while (!m_request && !m_ends) {
        if (m_last.shot && ahead < kReadAhead) {
            lock.unlock();
            std::string ignored;
            Background(*m_last.shot, (m_last.index + ++ahead) % m_last.shot->Count(), ignored);
            lock.lock();
        } else {
            m_changed.wait(lock);
        }
    }
    if (m_ends)
        return std::nullopt;
    m_last = *std::exchange(m_request, std::nullopt);
    return m_last;
}

Composed Compositor::Compose(const ComposeRequest& request) {
    Composed composed { request.serial, request.shot, request.index, nullptr, {}, {}, {} };
    composed.background = Background(*request.shot, request.index, composed.why);
    try {
        if (composed.background)
            composed.picture = Draw(request, *composed.background, composed);
    } catch (const std::exception& error) {
        composed.why = error.what();
    }
    if (composed.why.empty())
        composed.why = request.trouble;
    return composed;
}

std::shared_ptr<host::Frame> Compositor::Background(const Shot& shot, std::size_t index,
                                                    std::string& why) try {
    const std::pair key(shot.Id(), index);
    const auto hash = platform::MixHash(platform::MixHash(0, shot.Id()), index);
    if (const auto cached = m_cache.Find(hash, key))
        return cached->frame;
    auto frame = std::make_shared<host::Frame>();
    if (!shot.Read(index, m_reader, *frame, why))
        return nullptr;
    m_cache.Insert(hash, std::make_shared<CachedFrame>(CachedFrame { key, frame }));
    return frame;
} catch (const std::exception& error) {
    why = error.what();
    return nullptr;
}

const host::FrameRenderer& Compositor::RendererFor(const ComposeRequest& request) {
    if (!m_drawing || m_drawing->text != request.text || m_drawing->context != request.context)
        m_drawing.reset(new Drawing {
            request.text, request.context, { *m_effect, *request.text, *request.context } });
    return m_drawing->renderer;
}

QImage Compositor::Draw(const ComposeRequest& request, const host::Frame& background,
                        Composed& composed) {
    const auto values = request.shot->Values(request.index, request.clock);
    if (!m_effect || !request.text->IsOn(values.frame))
        return ToPicture(*background.image);
    if (!CopyFrame(background, m_canvas)) {
        composed.why = "there is no memory to draw the text in";
        return ToPicture(*background.image);
    }
    host::PixelRect touched;
    const auto& renderer = RendererFor(request);
    const auto result = renderer.Render(m_canvas, values, touched, composed.why);
    const auto& image = *m_canvas.image;
    if (result == host::RenderResult::kDone)
        composed.texts = renderer.Places({ image.Width(), image.Height() }, values);
    return ToPicture(result == host::RenderResult::kDone ? *m_canvas.image : *background.image);
}

} // namespace studio
