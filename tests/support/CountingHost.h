// SPDX-License-Identifier: BSD-3-Clause
// A host in memory for one effect instance and one frame. It counts what it lends, and any of its
// callbacks can be made to fail or to throw. Knows epi.h alone.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <epi/epi.h>

struct HostFailure {}; // what a callback throws

class CountingHost {
public:
    enum class Trouble { kNone, kFail, kThrow };
    static constexpr int kRowPadding = 12;
    static constexpr std::uint8_t kFill = 0x5A; // of the frame at the start, padding included

    // A frame of that size; depth is 24, 32 or 64. The parameters are zeros, the apply value is 1.
    CountingHost(int width, int height, int depth);
    CountingHost(const CountingHost&) = delete;
    CountingHost& operator=(const CountingHost&) = delete;

    long Call(long selector);

    // The callback number index (from 0) since the last call of this is in trouble; index -1: none.
    void MakeTrouble(int index, Trouble trouble);
    int CallbacksSoFar() const { return m_callbacks; }
    // Locks that were not undone. Negative: undone more often than made.
    int LocksOutstanding() const { return m_handleLocks + m_imageLocks; }
    // Anything that a host may not be asked for, such as a base address while unlocked.
    const std::string& Misuse() const { return m_misuse; }

    // The parameters; do not keep the reference over a call, because the memory moves.
    _TEXTPARAM& Param() { return *reinterpret_cast<_TEXTPARAM*>(m_memory.data()); }

    _EPIRECORD record;
    EPIPluginInfo pluginInfo;
    EPIParamDesc paramDesc;
    _TEXT_DIALOG_PARAM settings;
    double apply = 1.0;
    std::vector<std::uint8_t> pixels; // rows with their padding, top row first
    std::vector<std::uint8_t> archive;
    bool loading = false;
    bool scribbles = false; // Write changes the buffer that it is given
    int RowBytes() const { return m_width * m_depth / 8 + kRowPadding; }
    bool PaddingIsUntouched() const;

private:
    void FillImages();
    void FillHandlesAndArchives();

    // Counts a callback; true when it is the one that fails.
    bool InTrouble();
    std::int32_t Tell(int number) { return InTrouble() ? 0 : number; }
    void NoteMisuse(const char* what) { m_misuse += std::string(what) + "; "; }

    EPIObjectProcs m_objects { sizeof m_objects, nullptr, nullptr };
    EPIOffscreenProcs m_images {};
    EPIHandleProcs m_handles {};
    EPIArchiveProcs m_archives {};
    int m_width, m_height, m_depth;
    std::vector<std::uint8_t> m_memory;
    int m_handleLocks = 0;
    int m_imageLocks = 0;
    int m_callbacks = 0;
    int m_troubleAt = -1;
    Trouble m_trouble = Trouble::kNone;
    std::string m_misuse;
};
