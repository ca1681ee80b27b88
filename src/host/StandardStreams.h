// SPDX-License-Identifier: BSD-3-Clause
// Standard streams for a process that was started without some of them.
#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace host {

// Opens those that are closed on nothing, or a file that is opened later would take their number and
// with it the messages. Called before anything else is opened. Input and output are opened for what
// is not done with them: who reads or writes them learns that they are not there, and no frame goes
// to nowhere in silence.
inline void OpenStandardStreams() {
    static constexpr int kWays[] { O_WRONLY, O_RDONLY, O_WRONLY };
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", kWays[stream]); // takes the lowest free number, which is this one
}

} // namespace host
