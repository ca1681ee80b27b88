// SPDX-License-Identifier: BSD-3-Clause
// The control wrappers that are members of a window's object, so that the window can let go of them
// when it ends. A wrapper that ends first leaves the list by itself.
#pragma once

#include <vector>

class HuxControlImpl;

class HuxAttachedControls {
public:
    HuxAttachedControls() = default;
    HuxAttachedControls(const HuxAttachedControls&) = delete;
    HuxAttachedControls& operator=(const HuxAttachedControls&) = delete;
    ~HuxAttachedControls();

    // A wrapper is in one list at most; adding it again does nothing.
    void Add(HuxControlImpl& control);
    void Remove(HuxControlImpl& control);
    void DetachAll(); // and empties the list

    // False as soon as one of the controls refuses its value. What a check sets off may end wrappers
    // and this list.
    bool CheckControlValues() const;

private:
    std::vector<HuxControlImpl*> m_controls; // not owned
};
