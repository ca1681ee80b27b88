// SPDX-License-Identifier: BSD-3-Clause
// A host in memory with one file. It writes down what it was asked for, and any of its callbacks can be
// made to fail or to throw. Knows epi.h alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <epi/epi.h>

struct HostFailure {}; // what a callback throws

class FileHost {
public:
    enum class Trouble { kNone, kFail, kThrow };

    explicit FileHost(std::optional<std::string> file = std::nullopt);
    FileHost(const FileHost&) = delete;
    FileHost& operator=(const FileHost&) = delete;

    // The callback number index (from 0) is in trouble. Close and release can only throw.
    void MakeTrouble(int index, Trouble trouble);
    // Callbacks in order, such as "create2 open1 length read close release2 ".
    const std::string& Calls() const { return m_calls; }

    _EPIRECORD record {};
    std::optional<std::string> file; // replaced by flush; nothing: there is none
    FSSpec path {};
    std::int32_t claimedLength = -1; // what length gives instead, when it is not -1

private:
    struct Callbacks;
    bool InTrouble(const std::string& call);

    std::string m_written;
    std::size_t m_position = 0;
    std::string m_calls;
    int m_callbacks = 0;
    int m_troubleAt = -1;
    Trouble m_trouble = Trouble::kNone;
};
