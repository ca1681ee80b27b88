// SPDX-License-Identifier: BSD-3-Clause
// A thread's few objects that were given back and wait for their next use.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

namespace platform {

// Used as a thread_local only. Objects may come from and go to any thread. Takes no memory itself, so
// that giving back never fails.
template <class Object, std::size_t kMost>
class Recycler {
public:
    Recycler() = default;
    ~Recycler() { s_alive = false; }
    Recycler(const Recycler&) = delete;
    Recycler& operator=(const Recycler&) = delete;

    // False once the thread's own is destroyed: things that end later must not use it.
    static bool Alive() { return s_alive; }

    bool IsFull() const { return m_count == kMost; }

    // The one that was given last of those that suit; null when there is none.
    template <class Suits>
    std::unique_ptr<Object> Take(const Suits& suits) {
        for (std::size_t i = m_count; i-- > 0;) {
            if (suits(*m_objects[i])) {
                std::unique_ptr<Object> taken = std::move(m_objects[i]);
                Close(i);
                return taken;
            }
        }
        return nullptr;
    }

    // When it is full the oldest one makes room.
    void Give(std::unique_ptr<Object> object) {
        if (m_count == kMost) {
            Close(0);
        }
        m_objects[m_count++] = std::move(object);
    }

    void Clear() {
        while (m_count > 0) {
            Close(m_count - 1);
        }
    }

private:
    // The later ones move up to the place of an object that is gone or goes.
    void Close(std::size_t gap) {
        const auto first = m_objects.begin() + static_cast<std::ptrdiff_t>(gap);
        std::move(first + 1, m_objects.begin() + static_cast<std::ptrdiff_t>(m_count), first);
        m_objects[--m_count] = nullptr;
    }

    static inline thread_local bool s_alive = true;
    std::array<std::unique_ptr<Object>, kMost> m_objects;
    std::size_t m_count = 0;
};

} // namespace platform
