// SPDX-License-Identifier: BSD-3-Clause
#include "host/Handle.h"

#include <atomic>
#include <cstring>
#include <thread>

#include "LedgerTest.h"
#include "host/Tables.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class HandleTest : public LedgerTest {};

TEST_F(HandleTest, MovesWithItsBytesWhenTheLastLockEnds) {
    Handle handle(std::vector<std::uint8_t> { 1, 2, 3 });
    auto* const first = handle.Lock();
    EXPECT_EQ(handle.Lock(), first);
    handle.Unlock();
    std::memset(first, 9, 1);
    handle.Unlock();
    auto* const second = static_cast<std::uint8_t*>(handle.Lock());
    EXPECT_NE(second, first);
    EXPECT_THAT(std::vector(second, second + 3), ElementsAre(9, 2, 3));
    handle.Unlock();
}

TEST_F(HandleTest, TheTableEndsOnlyWhatItGave) {
    const auto& table = HandleTable();
    const auto given = Handle::Give(std::make_unique<Handle>(8));
    EXPECT_FALSE(Ledger::Get().IsBalanced());
    table.Dispose(given);
    EXPECT_TRUE(Ledger::Get().IsBalanced());

    Handle own(8);
    table.Dispose(own.Ref());
    table.Dispose(given);
    EXPECT_EQ(table.Lock(given), nullptr);
    EXPECT_EQ(table.Lock(nullptr), nullptr);
    EXPECT_THAT(TakeMisuse(), ElementsAre(HasSubstr("host owns"), HasSubstr("has ended"),
                                          HasSubstr("has ended"), HasSubstr("null reference")));
}

TEST_F(HandleTest, ConcurrentLocksSeeOneAddressAndWholeBytes) {
    Handle handle(std::vector<std::uint8_t>(64, 7));
    std::atomic<int> broken { 0 };
    const auto work = [&] {
        for (int i = 0; i < 2000; ++i) {
            const auto* outer = static_cast<std::uint8_t*>(handle.Lock());
            const auto* inner = static_cast<std::uint8_t*>(handle.Lock());
            broken += outer != inner || outer[0] != 7 || outer[63] != 7;
            handle.Unlock();
            broken += outer[31] != 7;
            handle.Unlock();
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(handle.Locks(), 0);
}

} // namespace
} // namespace host
