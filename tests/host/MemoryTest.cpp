// SPDX-License-Identifier: BSD-3-Clause
// The host where there is no memory: what it gives back it can give back, and a frame is whole or as it was.
#include <algorithm>
#include <cstring>
#include <new>

#include "LedgerTest.h"
#include "host/Effect.h"
#include "platform/Drawing.h"
#include "support/FailingMemory.h"

namespace host {
namespace {

using test::FailingMemory;
using test::Refuse;

class MemoryTest : public LedgerTest {};

TEST_F(MemoryTest, HandlesAreUnlockedAndEndWithoutItOrAreNotMade) {
    auto handle = std::make_unique<Handle>(std::vector<std::uint8_t> { 1, 2, 3 });
    auto* const bytes = static_cast<std::uint8_t*>(handle->Lock());
    {
        const FailingMemory none(0, Refuse::kAllFrom);
        handle->Unlock();
        handle->Unlock();
    }
    EXPECT_EQ(handle->Lock(), bytes); // it had nowhere to go
    EXPECT_EQ(bytes[2], 3);
    handle->Unlock();
    EXPECT_EQ(Ledger::Get().MisuseCount(), 1);
    handle->Lock();
    {
        const FailingMemory none(0, Refuse::kAllFrom);
        handle.reset();
    }
    EXPECT_EQ(Ledger::Get().MisuseCount(), 2);
    Ledger::Get().ForgetMisuse();
    for (int which = 0; which < 2; ++which) {
        const FailingMemory failing(which, Refuse::kOne);
        try {
            const Handle unmade(1000);
        } catch (const std::bad_alloc&) { // and nothing is alive of it
        }
    }
}

// Whichever allocation fails, from the entry point down to the fonts, where lines are kerned, composed,
// reordered, joined and of several families. A frame that is as it was has failed.
TEST_F(MemoryTest, AFrameIsWholeOrAsItWas) {
    std::string why;
    const auto plugin = Plugin::Load(TELOP_BUNDLE, why);
    ASSERT_TRUE(plugin) << why;
    const auto effect = Effect::Make(plugin, why);
    std::strcpy(effect->Params()->szDialogue, "AV e\u0301j\u0302 סוף سلم 日本\rCUT 12");
    effect->Params()->dwFlags = TEXT_DIALOGUE;
    effect->Params()->ptPos = { 5, 6 };
    const auto image = Image::Make(200, 120, kArgb32);
    test::Pixels right; // what is drawn first
    const auto draw = [&](test::Pixels& pixels) {
        std::ranges::fill(image->Bytes(), 0x60);
        std::ranges::fill(pixels, 0x60);
        auto drawn = false;
        try {
            drawn = effect->Render(*image, {}, why);
        } catch (const std::bad_alloc&) { // no memory for the reason
        }
        if (right.empty())
            right.assign(image->Bytes().begin(), image->Bytes().end());
        EXPECT_TRUE(std::ranges::equal(image->Bytes(), right) ||
                    (!drawn && std::ranges::equal(image->Bytes(), pixels)));
        std::ranges::copy(image->Bytes(), pixels.begin());
        return drawn;
    };
    test::ExpectAllOrNothing(image->Bytes().size(), [&] {
        platform::PurgeTextCaches();
        return draw;
    });
    EXPECT_NE(right, test::Pixels(right.size(), 0x60));
}

} // namespace
} // namespace host
