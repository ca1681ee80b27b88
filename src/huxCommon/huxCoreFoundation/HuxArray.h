// SPDX-License-Identifier: BSD-3-Clause
// An array that is asked by index and answers null past its end.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

template <class T>
class HuxArray {
public:
    HuxArray() = default;
    explicit HuxArray(std::vector<T> elements) : m_elements(std::move(elements)) {}

    std::size_t GetCount() const { return m_elements.size(); }
    bool IsEmpty() const { return m_elements.empty(); }
    // Lent; null past the end.
    const T* GetAt(std::size_t index) const {
        return index < m_elements.size() ? &m_elements[index] : nullptr;
    }

    auto begin() const { return m_elements.begin(); }
    auto end() const { return m_elements.end(); }

private:
    std::vector<T> m_elements;
};
