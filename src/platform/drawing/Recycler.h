// SPDX-License-Identifier: BSD-3-Clause
// A thread's few objects that were given back and wait for their next use.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace platform {

// Used as a thread_local only. Objects may come from and go to any thread.
template <class Object>
class Recycler {
public:
    explicit Recycler(std::size_t most) { m_objects.reserve(most); }
    ~Recycler() { s_alive = false; }
    Recycler(const Recycler&) = delete;
    Recycler& operator=(const Recycler&) = delete;

    // False once the thread's own is destroyed: things that end later must not use it.
    static bool Alive() { return s_alive; }

    // The one that was given last of those that suit; null when there is none.
    template <class Suits>
    std::unique_ptr<Object> Take(const Suits& suits) {
        for (auto it = m_objects.rbegin(); it != m_objects.rend(); ++it) {
            if (suits(**it)) {
                std::unique_ptr<Object> taken = std::move(*it);
                m_objects.erase(std::next(it).base());
                return taken;
            }
        }
        return nullptr;
    }

    // When it is full the oldest one makes room.
    void Give(std::unique_ptr<Object> object) {
        if (m_objects.size() == m_objects.capacity()) {
            m_objects.erase(m_objects.begin());
        }
        m_objects.push_back(std::move(object));
    }

private:
    static inline thread_local bool s_alive = true;
    std::vector<std::unique_ptr<Object>> m_objects;
};

} // namespace platform
