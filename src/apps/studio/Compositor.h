// SPDX-License-Identifier: BSD-3-Clause
// Reads frames and draws the text into them on a thread of its own, so that the window never waits.
// The pixels are those of an export: the plug-in draws them.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <QImage>
#include <QObject>

#include <epi/epi.h>

#include "apps/studio/Shot.h"
#include "host/Effect.h"
#include "host/jobs/FrameRenderer.h"
#include "platform/LruCache.h"
#include "platform/TextContext.h"

namespace studio {

struct ComposeRequest {
    std::uint64_t serial = 0; // the maker's, to know the result by
    std::shared_ptr<const Shot> shot;
    std::size_t index = 0;
    host::ShotClock clock;
    std::shared_ptr<const host::ShotText> text;
    std::string trouble; // why some of the text is not in it
    // The document's; it is told what could not be honoured to the letter.
    std::shared_ptr<platform::TextContext> context;
};

struct Composed {
    std::uint64_t serial = 0; // that of the request
    std::shared_ptr<const Shot> shot;
    std::size_t index = 0;
    // The frame under the text, which nobody changes any more; null when it could not be read.
    std::shared_ptr<host::Frame> background;
    std::vector<host::TextRect> texts; // what is in the picture, as FrameRenderer::Places says it
    QImage picture;                    // null when there is none to show
    std::string why;                   // what failed; empty when all went well
};

class Compositor {
public:
    using Deliver = std::function<void(const Composed&)>;

    // effect (null: frames are shown without text) must outlive it. deliver is called on the thread of
    // the maker, from its event loop, and no more once this is gone.
    Compositor(const host::Effect* effect, Deliver deliver);
    ~Compositor();

    // Takes the place of a request that was not begun yet. Of the requests that are, the results come
    // in their order. Frames behind the last one are read ahead while there is nothing to do.
    void Request(ComposeRequest request);

private:
    // What frames may take in memory between requests.
    static constexpr std::int64_t kCacheBytes = std::int64_t { 256 } << 20;
    struct CachedFrame {
        std::pair<std::uint64_t, std::size_t> key; // shot and index
        std::shared_ptr<host::Frame> frame;

        bool Matches(const std::pair<std::uint64_t, std::size_t>& other) const {
            return key == other;
        }
        std::int64_t Bytes() const {
            return static_cast<std::int64_t>(frame->image->Bytes().size());
        }
    };

    // Kept while the texts are the same, for what it has measured.
    struct Drawing {
        std::shared_ptr<const host::ShotText> text;
        std::shared_ptr<platform::TextContext> context;
        host::FrameRenderer renderer;
    };

    void Run();
    // Nothing at the end. Reads ahead while it waits.
    std::optional<ComposeRequest> Next();
    Composed Compose(const ComposeRequest& request);
    // Null with the reason.
    std::shared_ptr<host::Frame> Background(const Shot& shot, std::size_t index, std::string& why);
    const host::FrameRenderer& RendererFor(const ComposeRequest& request);
    QImage Draw(const ComposeRequest& request, const host::Frame& background, Composed& composed);

    const host::Effect* m_effect;
    Deliver m_deliver;
    QObject m_receiver; // of the results; those on their way when it ends are dropped
    // Used by the thread alone.
    host::PngReader m_reader;
    host::Frame m_canvas;
    platform::LruCache<CachedFrame> m_cache { kCacheBytes, 1 };
    ComposeRequest m_last;
    std::unique_ptr<Drawing> m_drawing;

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    std::optional<ComposeRequest> m_request;
    bool m_ends = false;

    std::thread m_thread; // last: it uses all of the above
};

} // namespace studio
