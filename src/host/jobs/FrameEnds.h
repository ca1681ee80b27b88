// SPDX-License-Identifier: BSD-3-Clause
// Where the frames of a run come from.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "host/frames/Frame.h"
#include "host/frames/PngReader.h"
#include "host/text/TokenText.h"

namespace host {

// One frame on its way through a run.
struct Ticket {
    std::int64_t order = 0; // 0, 1, 2, ... as taken
    TokenValues values;
    std::filesystem::path input; // empty for a stream
    std::string name;            // for messages
};

class FrameSource {
public:
    enum class Taken {
        kFrame,
        kEnd,
        kFailed, // the source is at its end too
    };
    virtual ~FrameSource() = default;

    // The next frame; a stream reads its pixels here. One thread at a time. order is the caller's.
    virtual Taken Take(Ticket& ticket, Frame& frame, std::string& why) = 0;
    // The pixels, where they can be read beside others. Any thread; false with the reason.
    virtual bool Load(const Ticket& ticket, PngReader& reader, Frame& frame, std::string& why) = 0;
    // Frames in all; 0 when only the end will tell.
    virtual std::int64_t Count() const = 0;
    // Whether Take may wait for somebody else without an end.
    virtual bool MayWait() const = 0;
};

} // namespace host
