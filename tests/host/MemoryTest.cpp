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
    const auto draw = [&](Image& image) {
        std::ranges::fill(image.Bytes(), 0x60);
        try {
            return effect->Render(image, {}, why);
        } catch (const std::bad_alloc&) { // no memory for the reason
            return false;
        }
    };
    const auto blank = Image::Make(200, 120, kArgb32), right = Image::Make(200, 120, kArgb32),
               image = Image::Make(200, 120, kArgb32);
    std::ranges::fill(blank->Bytes(), 0x60);
    ASSERT_TRUE(draw(*right)) << why;
    ASSERT_FALSE(std::ranges::equal(right->Bytes(), blank->Bytes()));
    for (const auto refuse : { Refuse::kOne, Refuse::kAllFrom }) {
        auto refused = true;
        for (int which = 0; refused; ++which) {
            platform::PurgeTextCaches();
            auto drawn = false;
            {
                const FailingMemory failing(which, refuse);
                drawn = draw(*image);
                refused = failing.HasRefused();
            }
            EXPECT_TRUE(drawn || refused);
            EXPECT_TRUE(std::ranges::equal(image->Bytes(), right->Bytes()) ||
                        (!drawn && std::ranges::equal(image->Bytes(), blank->Bytes())))
                << "without allocation " << which;
            EXPECT_TRUE(draw(*image) && std::ranges::equal(image->Bytes(), right->Bytes()))
                << "after allocation " << which << " " << why;
        }
    }
}

} // namespace
} // namespace host
