// SPDX-License-Identifier: BSD-3-Clause
// SIGINT and SIGTERM as a wish to stop, which the frames in work answer when they are whole.
#pragma once

#include "host/jobs/RunListener.h"

namespace telop {

// While it lives the two signals are noted and cancel the token; a second one ends the process at
// once. One at a time; the token must outlive it.
class Interruption {
public:
    explicit Interruption(host::CancelToken& cancel);
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    // The signal that came, 0 while none has.
    static int Signal();
};

} // namespace telop
