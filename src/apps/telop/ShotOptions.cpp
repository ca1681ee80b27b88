// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/ShotOptions.h"

#include <algorithm>

#include "apps/telop/Commands.h"
#include "apps/telop/OptionText.h"
#include "host/text/TokenText.h"

namespace telop {

void AddShotOptions(CLI::App& command, ShotOptions& options) {
    OptionGroup group(command, "Time and tokens");
    group.Add("--fps", options.fps, "RATE",
              "Frames a second (24): 23.976, 24, 25, 29.97, 30, 48, 50, 59.94 or 60");
    group.Add("--timecode", options.timecode, "START",
              "Time code of the shot's first frame (00:00:00:00); 01:00:00;00 is drop-frame");
    group.Flag("--drop-frame", options.dropFrame, "Count as drop-frame, at 29.97 and 59.94");
    group
        .Add("--define", options.defines, "KEY=VALUE",
             "A token of your own: {KEY} becomes VALUE; again for more")
        ->allow_extra_args(false);
}

host::ShotClock ClockOf(const ShotOptions& options, const host::ShotClock& before) {
    if (!options.fps && !options.timecode && !options.dropFrame)
        return before;
    std::string why;
    auto rate = before.timeCode.Rate();
    if (options.fps) {
        const auto parsed = host::FrameRate::Parse(*options.fps, why);
        if (!parsed)
            FailUsage("--fps: " + why);
        rate = *parsed;
    }
    // Another rate has another way of counting.
    auto start = options.timecode.value_or(before.Start());
    if (options.fps && !options.timecode && rate != before.timeCode.Rate())
        std::ranges::replace(start, ';', ':');
    const auto clock = host::ShotClock::Make(rate, options.dropFrame, start, why);
    if (!clock)
        FailUsage((options.timecode    ? "--timecode: "
                   : options.dropFrame ? "--drop-frame: "
                                       : "--fps: ") +
                  why);
    return *clock;
}

void AddDefines(const ShotOptions& options, host::Defines& defines) {
    for (const auto& typed : options.defines) {
        CheckUtf8("--define", typed);
        const auto equals = typed.find('=');
        if (equals == std::string::npos)
            FailUsage("--define: '" + typed + "' is not KEY=VALUE, such as shot=010");
        const auto key = typed.substr(0, equals);
        std::string why;
        if (!host::TokenText::IsDefinable(key, why))
            FailUsage("--define: " + why);
        defines[key] = typed.substr(equals + 1);
    }
}

} // namespace telop
