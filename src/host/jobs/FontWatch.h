// SPDX-License-Identifier: BSD-3-Clause
// Hears what the platform could not draw to the letter, and tells the user or stops the run.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/Report.h"

namespace host {

// One at a time in a process.
class FontWatch {
public:
    enum class Policy {
        kWarn,   // a warning for each fact
        kStrict, // a font or a character that is not there is a violation
    };
    // warn is called on any thread.
    FontWatch(Policy policy, std::function<void(const std::string&)> warn);
    FontWatch(const FontWatch&) = delete;
    FontWatch& operator=(const FontWatch&) = delete;
    ~FontWatch();

    bool IsStrict() const { return m_policy == Policy::kStrict; }
    // Under kStrict: a family (in the application's encoding) that is not installed under this name
    // is a violation. No name means the default family and is always there.
    void CheckFamily(std::string_view family);
    // The first violation; empty while there is none. Any thread.
    std::string Violation() const;

    // Under kStrict frames are drawn one after the other, between this and the lock's end: each fact
    // is reported once in a process, so a frame beside the one that met it would not hear of it.
    std::unique_lock<std::mutex> Lock() const;

private:
    void Hear(const platform::Report& report);
    void Violate(const std::string& text);

    Policy m_policy;
    std::function<void(const std::string&)> m_warn;
    mutable std::mutex m_drawing;
    mutable std::mutex m_mutex;
    std::string m_violation;
};

} // namespace host
