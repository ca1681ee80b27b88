// SPDX-License-Identifier: BSD-3-Clause
// The bounds of the cache and the order in which it forgets.
#include "platform/LruCache.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

struct Item {
    int key;
    std::int64_t bytes;
    bool Matches(int other) const { return key == other; }
    std::int64_t Bytes() const { return bytes; }
};

std::shared_ptr<const Item> MakeItem(int key, std::int64_t bytes) {
    return std::make_shared<Item>(Item { key, bytes });
}

TEST(LruCacheTest, ForgetsWhatWasNotUsedForLongestAndTakesNoOtherKeyOfAHash) {
    LruCache<Item> cache(3000, 1);
    for (int key = 0; key < 3; ++key)
        cache.Insert(key, MakeItem(key, 800));
    EXPECT_TRUE(cache.Find(0, 0));
    cache.Insert(3, MakeItem(3, 800));
    EXPECT_TRUE(cache.Find(0, 0));
    EXPECT_FALSE(cache.Find(1, 1));
    EXPECT_TRUE(cache.Find(2, 2));
    EXPECT_TRUE(cache.Find(3, 3));
    EXPECT_FALSE(cache.Find(3, 7));
    cache.Insert(3, MakeItem(7, 10));
    EXPECT_TRUE(cache.Find(3, 7));
    EXPECT_FALSE(cache.Find(3, 3));
}

TEST(LruCacheTest, StaysWithinItsBytes) {
    LruCache<Item> cache(10000, 2);
    for (int key = 0; key < 1000; ++key) {
        cache.Insert(MixHash(0, key), MakeItem(key, key * 7 % 3000));
        ASSERT_LE(cache.Count().bytes, 10000);
    }
    EXPECT_GT(cache.Count().bytes, 5000);
    cache.Insert(1, MakeItem(1, 5001)); // larger than a shard
    EXPECT_FALSE(cache.Find(1, 1));
    cache.Clear();
    EXPECT_EQ(cache.Count().bytes, 0);
}

TEST(LruCacheTest, RecentValuesAreTheCachesUntilItIsCleared) {
    LruCache<Item> cache(10000, 1);
    RecentValues<Item, 4> recent(cache, 100);
    recent.Keep(1, MakeItem(1, 100));
    recent.Keep(2, MakeItem(2, 101)); // too large
    ASSERT_TRUE(recent.Find(1, 1));
    EXPECT_EQ((*recent.Find(1, 1))->key, 1);
    EXPECT_FALSE(recent.Find(1, 7)); // another key of the same hash
    EXPECT_FALSE(recent.Find(2, 2));
    recent.Keep(5, MakeItem(5, 10)); // takes the place of 1
    EXPECT_FALSE(recent.Find(1, 1));
    EXPECT_TRUE(recent.Find(5, 5));
    cache.Clear();
    EXPECT_FALSE(recent.Find(5, 5));
}

} // namespace
