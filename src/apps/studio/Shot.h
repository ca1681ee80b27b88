// SPDX-License-Identifier: BSD-3-Clause
// The frames that are open: those of a picture, a folder or a pattern, or the test card's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/frames/Frame.h"
#include "host/frames/PngReader.h"
#include "host/frames/Sequence.h"
#include "host/text/TokenText.h"

namespace studio {

// Never changes once it is made, so any thread may read from it.
class Shot {
public:
    // Null with the reason, which names the input, when there is no frame; choices are then as
    // Sequence::Open gives them.
    static std::shared_ptr<const Shot> Open(const std::string& input, std::string& why,
                                            std::vector<std::string>* choices = nullptr);
    static std::shared_ptr<const Shot> TestCard();

    bool IsTestCard() const { return !m_sequence; }
    // As it was given to Open; empty for the test card.
    const std::string& Input() const { return m_input; }
    // Where the frames lie; empty for the test card.
    std::filesystem::path Folder() const;
    // Unlike that of any other shot of the process.
    std::uint64_t Id() const { return m_id; }

    // Ascending frame numbers, never empty. An index counts in them.
    std::span<const std::int64_t> Numbers() const { return m_numbers; }
    std::size_t Count() const { return m_numbers.size(); }
    // The frame of that number or, where there is none, the one before it or the first.
    std::size_t IndexOf(std::int64_t number) const;
    // In a document that counts and defines so.
    host::TokenValues Values(std::size_t index, const host::ShotClock& clock,
                             const host::Defines& defines = {}) const;
    // The file's path; "test card" for frames that have none.
    std::string Name(std::size_t index) const;
    bool Read(std::size_t index, host::PngReader& reader, host::Frame& frame,
              std::string& why) const;

private:
    Shot();
    void Describe();

    std::uint64_t m_id;
    std::string m_input;
    std::optional<host::Sequence> m_sequence;
    std::vector<std::int64_t> m_numbers;
    host::RunValues m_run; // what its frames have in common, but for what a document says
};

// The one input that several files stand for: their pattern when all have the same, else the folder
// that they lie in. Nothing, with the reason, when they lie in several folders. A single file, folder
// or pattern is the input itself.
std::optional<std::string> InputOf(const std::vector<std::string>& files, std::string& why);

} // namespace studio
