// SPDX-License-Identifier: BSD-3-Clause
// The effect of the bundle that the tree builds, driven as programs drive it.
#include <algorithm>
#include <array>
#include <thread>

#include "LedgerTest.h"
#include "host/Effect.h"
#include "platform/Drawing.h"
#include "platform/TextContext.h"

namespace host {
namespace {

using testing::Each;

class TextOverlayTest : public LedgerTest {
protected:
    void SetUp() override {
        effect = Make(LateEntries::kPresent);
        ASSERT_TRUE(effect) << why;
        auto params = effect->Params();
        std::snprintf(params->szInfoText, sizeof params->szInfoText, "PAN");
        params->dwFlags = TEXT_INFO;
        params->ptPos = { 5, 6 };
    }
    std::unique_ptr<Effect> Make(LateEntries late) {
        auto plugin = Plugin::Load(TELOP_BUNDLE, why);
        return plugin ? Effect::Make(std::move(plugin), why, late) : nullptr;
    }
    // A grey frame with the text in it, in kArgb32 or kArgb64 order whatever the format was.
    std::unique_ptr<Image> Draw(const Effect& with, PixelFormat format) {
        auto image = Image::Make(150, 80, format, 9);
        std::ranges::fill(image->Bytes(), kGrey);
        EXPECT_TRUE(with.Render(*image, {}, why)) << why;
        EXPECT_EQ(Ledger::Get().Describe(), "");
        for (std::int32_t y = 0; y < 80; ++y)
            EXPECT_THAT(std::span(image->Row(y).data() + image->Row(y).size(), 9), Each(kGrey));
        auto ordered = Image::Make(150, 80,
                                   format.depth == 64 ? kArgb64
                                   : format.alpha < 0 ? kRgb24
                                                      : kArgb32);
        CopyPixels(*ordered, 0, 0, *image, { 0, 0, 150, 80 });
        return ordered;
    }
    static bool Same(const Image& a, const Image& b) {
        return std::ranges::equal(a.Bytes(), b.Bytes());
    }
    static constexpr std::uint8_t kGrey = 0x60;
    std::string why;
    std::unique_ptr<Effect> effect;
};

// A host without the late entries gets it in the default order, which is the first.
TEST_F(TextOverlayTest, DrawsTheSameTextInEveryChannelOrder) {
    const auto early = Make(LateEntries::kAbsent);
    early->SetParams(effect->CopyParams());
    for (const auto& first : { kRgb24, kArgb32, kArgb64 }) {
        const auto expected = Draw(*effect, first);
        EXPECT_FALSE(std::ranges::all_of(expected->Bytes(), [](int b) { return b == kGrey; }));
        std::array<std::int32_t, 4> places { 0, 1, 2, 3 };
        do {
            const PixelFormat format { first.depth, first.depth == 24 ? -1 : places[3], places[0],
                                       places[1], places[2] };
            if (format.IsValid())
                EXPECT_TRUE(Same(*Draw(*effect, format), *expected)) << first.depth << places[0];
        } while (std::ranges::next_permutation(places).found);
        if (first.depth != 64)
            EXPECT_TRUE(Same(*Draw(*early, first), *expected)) << first.depth;
    }
}

// Documents' contexts on threads of their own over the same caches, which are emptied meanwhile; then all
// once more, as a later run draws them out of full caches.
TEST_F(TextOverlayTest, ConcurrentContextsKeepTheirEncodingsAndReportsApart) {
    struct Row {
        const char* encoding;
        const char* text;
        const char* font;
        std::vector<std::string> reported;
        std::unique_ptr<Image> first = nullptr;
    };
    Row rows[] = { { "CP932", "\x83\x65\x83\x67", "", {} },
                   { "UTF-8", "\x83\x65\x83\x67", "", { "83" } },
                   { "UTF-8", "テト", "None A", { "None A" } },
                   { "CP932", "\x83\x65\x83\x67", "None B", { "None B" } },
                   { "CP932", "Cut 12", "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E", {} },
                   { "UTF-8", "秋の夕暮れ אב", "ＭＳ ゴシック", {} },
                   { "UTF-8", "\U0010FFFD", "", { "U+10FFFD" } } };
    const auto draw = [&](Row& row) {
        platform::TextContext met(*platform::TextEncoding::Find(row.encoding));
        const platform::TextScope scope(met);
        auto params = effect->CopyParams();
        std::snprintf(params.szInfoText, sizeof params.szInfoText, "%s", row.text);
        std::snprintf(params.szFontName, sizeof params.szFontName, "%s", row.font);
        for (int i = 0; i < 20; ++i) {
            if (i % 5 == 4)
                platform::PurgeTextCaches();
            auto image = Image::Make(150, 80, kArgb32);
            std::string reason;
            EXPECT_TRUE(effect->RenderWith(params, *image, {}, reason)) << reason;
            if (!row.first)
                row.first = std::move(image);
            else
                EXPECT_TRUE(Same(*image, *row.first)) << row.encoding << " " << row.text;
        }
        std::vector<std::string> reported;
        for (const auto& report : met.Reports())
            reported.push_back(report.asked);
        EXPECT_EQ(reported, row.reported) << row.encoding << " " << row.text;
    };
    for (int round = 0; round < 2; ++round) {
        std::vector<std::thread> threads;
        for (auto& row : rows)
            threads.emplace_back([&draw, &row] { draw(row); });
        for (auto& thread : threads)
            thread.join();
    }
    EXPECT_TRUE(Same(*rows[0].first, *rows[2].first)) << "the same characters";
    EXPECT_FALSE(Same(*rows[0].first, *rows[1].first)) << "the same bytes";
}

} // namespace
} // namespace host
