// SPDX-License-Identifier: BSD-3-Clause
// The text service and the font calls over one made-up font of solid blocks, so that everything above
// them runs on machines that have no font libraries, with pixels that arithmetic foretells.
#include "support/BlockFont.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

#include "platform/TextContext.h"
#include "platform/text/TextService.h"

namespace platform {

// Its own family has number 1, whatever the case of the name.
void GetFNum(const std::uint8_t* name, FontNumber* number) {
    const std::string asked = DecodeText({ reinterpret_cast<const char*>(name) + 1, name[0] });
    const auto lower = [](char c) { return c | 0x20; };
    *number = std::ranges::equal(asked, std::string_view(block_font::kFamily), {}, lower, lower);
    if (*number == 0 && !asked.empty()) {
        TextContext::Current().Tell({ ReportKind::kFontSubstituted, asked, block_font::kFamily,
                                      "no installed family has this name" });
    }
}

namespace text {
namespace {

struct Block {
    std::int64_t x, width;

    bool operator==(const Block&) const = default;
};

class BlockLine final : public Line {
public:
    BlockLine(std::vector<Block> blocks, std::int64_t width, std::int32_t height)
        : Line(width, 0), m_blocks(std::move(blocks)), m_height(height) {}

    const std::vector<Block>& Blocks() const { return m_blocks; }
    std::int32_t Height() const { return m_height; }

private:
    std::vector<Block> m_blocks;
    std::int32_t m_height;
};

} // namespace

std::uint64_t Line::NextId() {
    static std::atomic<std::uint32_t> last { 0 };
    return ++last;
}

FontMetrics MetricsOf(FontNumber /*font*/, std::int32_t size) {
    return { block_font::Ascent(size), block_font::Descent(size), block_font::Wide(size), 0 };
}

LinePtr LayOutLine(FontNumber /*font*/, std::int32_t size, std::string_view bytes) {
    std::vector<Block> blocks;
    std::int64_t pen = 0;
    while (!bytes.empty()) {
        const std::size_t length = CharacterLength(bytes);
        const auto first = static_cast<std::uint8_t>(bytes[0]);
        const bool draws = length > 1 || first > ' ';
        const std::int64_t advance = length > 1    ? block_font::Wide(size)
                                     : first < ' ' ? 0
                                                   : block_font::Narrow(size);
        if (draws && advance > 1)
            blocks.push_back({ pen, advance - 1 });
        pen += advance;
        bytes.remove_prefix(length);
    }
    // Kept, so that the same text is the same line and pictures are found again.
    static std::mutex mutex;
    static std::vector<std::shared_ptr<const BlockLine>> lines;
    const std::lock_guard lock(mutex);
    for (const auto& line : lines)
        if (line->Height() == block_font::Ascent(size) && line->WidthPx() == pen &&
            line->Blocks() == blocks)
            return line;
    if (lines.size() > 64)
        lines.clear();
    return lines.emplace_back(
        std::make_shared<BlockLine>(std::move(blocks), pen, block_font::Ascent(size)));
}

void TellCut(const Line& /*line*/, std::int64_t /*y*/, std::int64_t /*height*/) {} // blocks fit

void PaintLine(const Line& line, std::int64_t x, std::int64_t y, CoverageTarget& target) {
    const auto& blocks = static_cast<const BlockLine&>(line);
    for (const Block& block : blocks.Blocks())
        for (std::int64_t row = y - blocks.Height(); row < y; ++row)
            target.PaintSpan(x + block.x, row, block.width, 255);
}

PixelBox InkOf(const Line& line) {
    return { 0, -std::int64_t { static_cast<const BlockLine&>(line).Height() }, line.WidthPx(), 0 };
}

PixelBox DifferenceOf(const Line& a, const Line& b) {
    const auto& lineA = static_cast<const BlockLine&>(a);
    const auto& lineB = static_cast<const BlockLine&>(b);
    PixelBox box = Union(InkOf(a), InkOf(b));
    if (lineA.Height() == lineB.Height()) {
        const auto leftOf = [&box](const auto& block, const auto& end) {
            return block == end ? box.right : block->x;
        };
        const auto [blockA, blockB] = std::ranges::mismatch(lineA.Blocks(), lineB.Blocks());
        box.left =
            std::min(leftOf(blockA, lineA.Blocks().end()), leftOf(blockB, lineB.Blocks().end()));
    }
    return box;
}

ServiceCacheCounts CountServiceCaches() {
    return {};
}

void PurgeServiceCaches() {}

} // namespace text
} // namespace platform
