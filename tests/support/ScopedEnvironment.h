// SPDX-License-Identifier: BSD-3-Clause
// Environment variables with other values for as long as a test runs.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class ScopedEnvironment {
public:
    // A null value removes the variable.
    ScopedEnvironment(const char* name, const char* value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        Set(value);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment() { Set(m_old ? m_old->c_str() : nullptr); }

private:
    void Set(const char* value) const {
        if (value)
            setenv(m_name, value, 1);
        else
            unsetenv(m_name);
    }

    const char* m_name;
    std::optional<std::string> m_old;
};
