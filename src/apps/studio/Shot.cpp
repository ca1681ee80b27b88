// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Shot.h"

#include <algorithm>
#include <atomic>
#include <ctime>
#include <filesystem>
#include <numeric>
#include <utility>

#include "apps/studio/TestCard.h"

namespace studio {

namespace {

std::atomic<std::uint64_t> s_nextId { 1 };

bool ToFrame(const QImage& picture, host::Frame& frame) {
    const auto rgb = picture.convertToFormat(QImage::Format_RGB888);
    if (rgb.isNull() || !host::PrepareImage(frame, rgb.width(), rgb.height(), host::kRgb24))
        return false;
    frame.header = {};
    for (int y = 0; y < rgb.height(); ++y) {
        const auto row = frame.image->Row(y);
        std::copy_n(rgb.constScanLine(y), row.size(), row.data());
    }
    return true;
}

} // namespace

Shot::Shot() : m_id(s_nextId++) {}

std::shared_ptr<const Shot> Shot::Open(const std::string& input, std::string& why,
                                       std::vector<std::string>* choices) {
    auto sequence = host::Sequence::Open(input, why, choices);
    if (!sequence)
        return nullptr;
    std::shared_ptr<Shot> shot(new Shot);
    shot->m_input = input;
    shot->m_numbers = sequence->Numbers();
    shot->m_sequence = std::move(sequence);
    shot->Describe();
    return shot;
}

std::shared_ptr<const Shot> Shot::TestCard() {
    std::shared_ptr<Shot> shot(new Shot);
    shot->m_numbers.resize(kTestCardFrames);
    std::iota(shot->m_numbers.begin(), shot->m_numbers.end(), 1);
    shot->Describe();
    return shot;
}

void Shot::Describe() {
    m_run.SetShot(m_numbers, Folder());
    if (!m_sequence)
        m_run.name = "test-card";
    m_run.SetDate(std::time(nullptr));
}

std::filesystem::path Shot::Folder() const {
    std::error_code ignored;
    const std::filesystem::path path(m_input);
    return std::filesystem::is_directory(path, ignored) ? path : path.parent_path();
}

std::size_t Shot::IndexOf(std::int64_t number) const {
    const auto after = std::ranges::upper_bound(m_numbers, number);
    return after == m_numbers.begin() ? 0 : static_cast<std::size_t>(after - m_numbers.begin()) - 1;
}

host::TokenValues Shot::Values(std::size_t index, const host::ShotClock& clock,
                               const host::Defines& defines) const {
    auto run = m_run;
    run.SetClock(clock);
    run.defines = defines;
    return { m_numbers[index],
             m_sequence ? m_sequence->Frames()[index].path.stem().string()
                        : std::string("test-card"),
             std::make_shared<host::RunValues>(std::move(run)) };
}

std::string Shot::Name(std::size_t index) const {
    return m_sequence ? m_sequence->Frames()[index].path.string() : std::string("test card");
}

bool Shot::Read(std::size_t index, host::PngReader& reader, host::Frame& frame,
                std::string& why) const {
    if (m_sequence)
        return reader.Read(m_sequence->Frames()[index].path, frame, why);
    if (ToFrame(DrawTestCard(m_numbers[index]), frame))
        return true;
    why = "there is no memory for the test card";
    return false;
}

std::optional<std::string> InputOf(const std::vector<std::string>& files, std::string& why) {
    if (files.size() == 1)
        return files.front();
    auto pattern = host::FramePattern::Of(files.front());
    if (pattern && std::ranges::all_of(files, [&](const std::string& file) {
            return host::FramePattern::Of(file) == pattern;
        }))
        return pattern;
    const auto folder = std::filesystem::path(files.front()).parent_path();
    for (const auto& file : files) {
        if (std::filesystem::path(file).parent_path() == folder)
            continue;
        why = "the files lie in several folders: " + files.front() + " and " + file;
        return std::nullopt;
    }
    return folder.empty() ? std::string(".") : folder.string();
}

} // namespace studio
