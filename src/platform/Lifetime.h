// SPDX-License-Identifier: BSD-3-Clause
// Whether an object is still there, asked after a call that may have ended it: any event may end
// windows, controls and their wrappers.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace platform {

// The base, or a member, of an object that others may end.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

private:
    friend class Alive;
    std::shared_ptr<const void> m_token = std::make_shared<char>();
};

// Made while the object is there; says from then on whether it still is.
class Alive {
public:
    explicit Alive(const Lifetime& object) : m_token(object.m_token) {}
    explicit operator bool() const { return !m_token.expired(); }

private:
    std::weak_ptr<const void> m_token;
};

// Gives a member of the owner a value for a scope. What it was comes back, unless the owner has gone.
template <class T>
class WhileSet {
public:
    WhileSet(const Lifetime& owner, T& member, std::type_identity_t<T> value)
        : m_alive(owner), m_member(member), m_before(std::exchange(member, std::move(value))) {}
    WhileSet(const WhileSet&) = delete;
    WhileSet& operator=(const WhileSet&) = delete;
    ~WhileSet() {
        if (m_alive)
            m_member = std::move(m_before);
    }

private:
    Alive m_alive;
    T& m_member;
    T m_before;
};

} // namespace platform
