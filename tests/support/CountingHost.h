// SPDX-License-Identifier: BSD-3-Clause
// A host in memory for one effect instance, one frame and one file. It counts what it lends, and any of
// its callbacks can be made to fail or to throw.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <epi/epi.h>

#include "support/FakeImage.h"

struct HostFailure {}; // what a callback throws

class CountingHost {
public:
    enum class Trouble { kNone, kFail, kThrow };
    // A frame of that size; depth is 24, 32 or 64. The parameters are zeros, the apply value is 1.
    CountingHost(int width, int height, int depth);
    CountingHost(const CountingHost&) = delete;
    CountingHost& operator=(const CountingHost&) = delete;

    long Call(long selector);

    // The callback number index (from 0) since the last call of this is in trouble; index -1: none.
    void MakeTrouble(int index, Trouble trouble);
    int CallbacksSoFar() const { return m_callbacks; }
    // Locks, objects and open files that were not undone. Negative: undone more often than made.
    int LocksOutstanding() const { return m_handleLocks + image.locks + m_objectsLent + m_isOpen; }

    // The parameters; do not keep the reference over a call, because the memory moves.
    _TEXTPARAM& Param() { return *reinterpret_cast<_TEXTPARAM*>(m_memory.data()); }

    _EPIRECORD record;
    EPIPluginInfo pluginInfo;
    EPIParamDesc paramDesc;
    _TEXT_DIALOG_PARAM settings;
    double apply = 1.0;
    FakeImage image; // the frame
    std::vector<std::uint8_t> archive;
    bool loading = false;
    bool scribbles = false; // Write changes the buffer that it is given
    // What a text archive reads that is opened for this path, and holds when one was flushed.
    FSSpec path {};
    std::string file;
    std::optional<std::int32_t> claimedLength; // in place of the archive's

private:
    void FillHandles();
    void FillArchives();
    void FillFiles();

    // Counts a callback; true when it is the one that fails.
    bool InTrouble();

    EPIObjectProcs m_objects { sizeof m_objects, nullptr, nullptr };
    EPIHandleProcs m_handles {};
    EPIArchiveProcs m_archives {};
    std::vector<std::uint8_t> m_memory;
    int m_handleLocks = 0;
    int m_objectsLent = 0;
    bool m_isOpen = false; // the file
    int m_callbacks = 0;
    int m_troubleAt = -1;
    Trouble m_trouble = Trouble::kNone;
};
