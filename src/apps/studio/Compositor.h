// SPDX-License-Identifier: BSD-3-Clause
// Reads frames and draws the text into them on a thread of its own, so that the window never waits.
// The pixels are those of an export: the plug-in draws them.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <QImage>

#include <epi/epi.h>

#include "apps/studio/Mailbox.h"
#include "apps/studio/Shot.h"
#include "host/Effect.h"
#include "platform/TextContext.h"

namespace studio {

struct ComposeRequest {
    std::uint64_t serial = 0; // the maker's, to know the result by
    std::shared_ptr<const Shot> shot;
    std::size_t index = 0;
    bool textIsOn = true;
    _TEXTPARAM params {};
    std::array<std::string, 4> strings; // in the context's encoding
    // The document's; it is told what could not be honoured to the letter.
    std::shared_ptr<platform::TextContext> context;
};

struct Composed {
    std::uint64_t serial = 0; // that of the request
    std::shared_ptr<const Shot> shot;
    std::size_t index = 0;
    // The frame under the text, which nobody changes any more; null when it could not be read.
    std::shared_ptr<host::Frame> background;
    QImage picture;  // null when there is none to show
    std::string why; // what failed; empty when all went well
};

class Compositor {
public:
    using Deliver = std::function<void(const Composed&)>;

    // effect (null: frames are shown without text) must outlive it. deliver is called on the thread of
    // the maker, from its event loop, and no more once this is gone.
    Compositor(const host::Effect* effect, Deliver deliver);
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;
    ~Compositor();

    // Takes the place of a request that was not begun yet. Of the requests that are, the results come
    // in their order. Frames behind the last one are read ahead while there is nothing to do.
    void Request(ComposeRequest request);

    // What frames may take in memory between requests.
    static constexpr std::int64_t kCacheBytes = std::int64_t { 256 } << 20;

private:
    class Worker;

    Mailbox m_mailbox;
    Deliver m_deliver;
    std::unique_ptr<Worker> m_worker;
};

} // namespace studio
