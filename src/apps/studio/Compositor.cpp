// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Compositor.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "apps/studio/Pixels.h"
#include "platform/LruCache.h"

namespace studio {

namespace {

constexpr std::size_t kReadAhead = 8; // frames

struct CachedFrame {
    std::uint64_t shot;
    std::size_t index;
    std::shared_ptr<host::Frame> frame;

    bool Matches(const std::pair<std::uint64_t, std::size_t>& key) const {
        return key == std::pair(shot, index);
    }
    std::int64_t Bytes() const { return static_cast<std::int64_t>(frame->image->Bytes().size()); }
};

} // namespace

class Compositor::Worker {
public:
    Worker(const host::Effect* effect, std::function<void(Composed)> deliver)
        : m_effect(effect), m_deliver(std::move(deliver)), m_thread([this] { Run(); }) {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        {
            std::lock_guard const lock(m_mutex);
            m_ends = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }

    void Request(ComposeRequest request) {
        {
            std::lock_guard const lock(m_mutex);
            m_request = std::move(request);
        }
        m_changed.notify_all();
    }

private:
    void Run() {
        while (auto const request = Next())
            m_deliver(Compose(*request));
    }

    // Nothing at the end. Reads ahead while it waits.
    std::optional<ComposeRequest> Next() {
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

    Composed Compose(const ComposeRequest& request) {
        Composed composed { request.serial, request.shot, request.index, nullptr, {}, {} };
        try {
            composed.background = Background(*request.shot, request.index, composed.why);
            if (composed.background)
                composed.picture = Draw(request, *composed.background, composed.why);
        } catch (const std::exception& error) {
            composed.why = error.what();
        }
        return composed;
    }

    std::shared_ptr<host::Frame> Background(const Shot& shot, std::size_t index, std::string& why) {
        std::pair const key(shot.Id(), index);
        auto const hash = platform::MixHash(platform::MixHash(0, shot.Id()), index);
        if (auto const cached = m_cache.Find(hash, key))
            return cached->frame;
        auto frame = std::make_shared<host::Frame>();
        if (!shot.Read(index, m_reader, *frame, why))
            return nullptr;
        m_cache.Insert(hash,
                       std::make_shared<CachedFrame>(CachedFrame { key.first, index, frame }));
        return frame;
    }

    QImage Draw(const ComposeRequest& request, const host::Frame& background, std::string& why) {
        if (!m_effect || !request.textIsOn)
            return ToPicture(*background.image);
        if (!CopyFrame(background, m_canvas)) {
            why = "there is no memory to draw the text in";
            return ToPicture(*background.image);
        }
        platform::TextScope const scope(*request.context);
        host::FrameInfo info;
        for (std::size_t i = 0; i < info.strings.size(); ++i)
            info.strings[i] = request.strings[i];
        if (m_effect->RenderWith(request.params, *m_canvas.image, info, why))
            return ToPicture(*m_canvas.image);
        return ToPicture(*background.image);
    }

    const host::Effect* m_effect;
    std::function<void(Composed)> m_deliver;
    // Used by the thread alone.
    host::PngReader m_reader;
    host::Frame m_canvas;
    platform::LruCache<CachedFrame> m_cache { kCacheBytes, 1 };
    ComposeRequest m_last;

    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    std::optional<ComposeRequest> m_request;
    bool m_ends = false;

    std::thread m_thread; // last: it uses all of the above
};

Compositor::Compositor(const host::Effect* effect, Deliver deliver)
    : m_deliver(std::move(deliver)),
      m_worker(std::make_unique<Worker>(effect, [this](Composed composed) {
          m_mailbox.Post([this, composed = std::move(composed)] { m_deliver(composed); });
      })) {}

Compositor::~Compositor() = default;

void Compositor::Request(ComposeRequest request) {
    m_worker->Request(std::move(request));
}

} // namespace studio
