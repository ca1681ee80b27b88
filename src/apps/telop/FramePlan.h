// SPDX-License-Identifier: BSD-3-Clause
// Which frames a run makes of what, and where they go: the source and the sink that INPUT, OUTPUT and
// the frame options ask for.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/telop/FrameSink.h"
#include "apps/telop/FrameSource.h"
#include "apps/telop/RenderOptions.h"
#include "host/frames/FrameRanges.h"
#include "host/frames/Sequence.h"

namespace telop {

class FramePlan {
public:
    // Throws when the input has no such frames, or an output exists that is not to be replaced.
    // Reads folders, no picture, and writes nothing.
    explicit FramePlan(const RenderOptions& options);
    ~FramePlan();

    // Makes the outputs' folder where it is missing. Throws when it cannot.
    void PrepareFolder() const;

    FrameSource& Source() { return *m_source; }
    FrameSink& Sink() { return *m_sink; }
    bool ReadsStream() const { return m_readsStream; }
    bool WritesStream() const { return m_writesStream; }
    // Frames that --frames asks for by number and the input does not have; the first of them.
    const std::vector<std::int64_t>& Missing() const { return m_missing; }

private:
    void OpenInput(const RenderOptions& options);
    void OpenOutput(const RenderOptions& options);
    void OpenFiles(const RenderOptions& options);
    void OpenNumberedFiles(const RenderOptions& options);
    void RefuseExisting(const std::vector<std::string>& existing) const;

    host::FrameRanges m_wanted;
    std::optional<host::Sequence> m_input; // none for a stream
    std::vector<host::FrameFile> m_files;  // of it, those that are wanted
    std::optional<host::SequenceOutput> m_output;
    std::filesystem::path m_folder; // of the outputs; empty for the current one, or a stream
    std::vector<std::int64_t> m_missing;
    std::unique_ptr<FrameSource> m_source;
    std::unique_ptr<FrameSink> m_sink;
    bool m_readsStream = false;
    bool m_writesStream = false;
};

} // namespace telop
