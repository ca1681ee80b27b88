// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Interruption.h"

#include <array>
#include <atomic>
#include <csignal>

namespace telop {

namespace {

constexpr std::array kSignals { SIGINT, SIGTERM };

std::atomic<int> s_signal { 0 };
std::atomic<host::CancelToken*> s_cancel { nullptr };
static_assert(std::atomic<int>::is_always_lock_free &&
                  std::atomic<host::CancelToken*>::is_always_lock_free,
              "a signal handler may not wait for a lock");

void Note(int signal) {
    s_signal.store(signal, std::memory_order_relaxed);
    if (auto* cancel = s_cancel.load(std::memory_order_relaxed))
        cancel->Cancel();
}

} // namespace

Interruption::Interruption(host::CancelToken& cancel) {
    s_signal = 0;
    s_cancel = &cancel;
    struct sigaction action {};
    action.sa_handler = Note;
    // The default action comes back with the first signal, so that the second one is final.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

Interruption::~Interruption() {
    for (const int signal : kSignals)
        std::signal(signal, SIG_DFL);
    s_cancel = nullptr;
}

int Interruption::Signal() {
    return s_signal.load(std::memory_order_relaxed);
}

} // namespace telop
