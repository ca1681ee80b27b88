// SPDX-License-Identifier: BSD-3-Clause
// Gives a window object a command of its own.
#pragma once

#include <cstdint>

template <class Base>
class HuxWindowT : public Base {
public:
    // Ends the window; the object stays and may create it anew.
    virtual void Destroy() { this->Dispose(); }
    // Does nothing. It keeps the operations after it where callers that count slots expect them.
    virtual void DummyHuxWindow() {}

    std::uint32_t GetCommandID() const { return m_uCommandID; }
    void SetCommandID(std::uint32_t commandID) { m_uCommandID = commandID; }

protected:
    std::uint32_t m_uCommandID = 0;
};
