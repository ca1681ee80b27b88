// SPDX-License-Identifier: BSD-3-Clause
// A cache of immutable shared values, bounded in bytes, least recently used out first, and a thread's
// own table in front of it.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <list>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

struct CacheCount {
    std::int64_t bytes = 0;
    std::int64_t hits = 0;
    std::int64_t misses = 0;
};

// Spreads every bit of a word over the whole hash (a multiplication by an odd constant near 2^64
// over the golden ratio, and a fold of the high half).
inline std::uint64_t MixHash(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
    return hash ^ (hash >> 32);
}

inline std::uint64_t HashBytes(std::uint64_t hash, std::string_view bytes) {
    hash = MixHash(hash, bytes.size());
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), 8);
        hash = MixHash(hash, word);
    }
    std::uint64_t rest = 0;
    if (!bytes.empty()) // an empty view may have no address
        std::memcpy(&rest, bytes.data(), bytes.size());
    return MixHash(hash, rest);
}

// Value has `bool Matches(const Key&) const` for each key type that it is looked up by, and
// `std::int64_t Bytes() const`. Of two values with one hash the later stays. Any thread; values are
// used outside the lock, and outlive their place in the cache as long as someone holds them.
template <class Value>
class LruCache {
public:
    using Pointer = std::shared_ptr<const Value>;

    // The bound is split evenly over shards, each with its own lock.
    LruCache(std::int64_t maxBytes, std::size_t shards) : m_maxBytes(maxBytes), m_shards(shards) {}

    template <class Key>
    Pointer Find(std::uint64_t hash, const Key& key) {
        Shard& shard = ShardOf(hash);
        const std::lock_guard lock(shard.mutex);
        const auto found = shard.places.find(hash);
        if (found == shard.places.end() || !found->second->value->Matches(key)) {
            ++shard.count.misses;
            return nullptr;
        }
        ++shard.count.hits;
        shard.entries.splice(shard.entries.begin(), shard.entries, found->second);
        return found->second->value;
    }

    // A value larger than its shard is not kept.
    void Insert(std::uint64_t hash, Pointer value) {
        const std::int64_t bytes = value->Bytes() + kEntryBytes;
        const std::int64_t bound = m_maxBytes / static_cast<std::int64_t>(m_shards.size());
        if (bytes > bound)
            return;
        Shard& shard = ShardOf(hash);
        Entries fresh; // joins the others last: running out of memory leaves no half of it
        fresh.push_front({ hash, bytes, std::move(value) });
        Entries dropped; // freed after the lock
        const std::lock_guard lock(shard.mutex);
        if (const auto found = shard.places.find(hash); found != shard.places.end())
            Drop(shard, found->second, dropped);
        while (shard.count.bytes + bytes > bound)
            Drop(shard, std::prev(shard.entries.end()), dropped);
        shard.places.emplace(hash, fresh.begin());
        shard.entries.splice(shard.entries.begin(), fresh);
        shard.count.bytes += bytes;
    }

    void Clear() {
        m_generation.fetch_add(1, std::memory_order_relaxed);
        for (Shard& shard : m_shards) {
            Entries dropped;
            const std::lock_guard lock(shard.mutex);
            dropped.swap(shard.entries);
            shard.places.clear();
            shard.count.bytes = 0;
        }
    }

    CacheCount Count() {
        CacheCount sum;
        for (Shard& shard : m_shards) {
            const std::lock_guard lock(shard.mutex);
            sum.bytes += shard.count.bytes;
            sum.hits += shard.count.hits;
            sum.misses += shard.count.misses;
        }
        return sum;
    }

    std::int64_t MaxBytes() const { return m_maxBytes; }
    // How often it was cleared.
    std::uint64_t Generation() const { return m_generation.load(std::memory_order_relaxed); }

private:
    static constexpr std::int64_t kEntryBytes = 128; // list and map nodes, control block

    struct Entry {
        std::uint64_t hash;
        std::int64_t bytes;
        Pointer value;
    };
    using Entries = std::list<Entry>;
    struct Shard {
        std::mutex mutex;
        Entries entries; // most recently used first
        std::unordered_map<std::uint64_t, typename Entries::iterator> places;
        CacheCount count;
    };

    // The map inside a shard uses the low bits, so shards go by the high ones.
    Shard& ShardOf(std::uint64_t hash) { return m_shards[(hash >> 48) % m_shards.size()]; }

    static void Drop(Shard& shard, typename Entries::iterator entry, Entries& dropped) {
        shard.count.bytes -= entry->bytes;
        shard.places.erase(entry->hash);
        dropped.splice(dropped.begin(), shard.entries, entry);
    }

    const std::int64_t m_maxBytes;
    std::atomic<std::uint64_t> m_generation { 0 };
    std::vector<Shard> m_shards;
};

// Hashes that were asked for lately. A value is worth keeping in a cache from the second time on: those
// of a text that changes with every frame would only push out what others use. Any thread.
class OnceTable {
public:
    bool SeenBefore(std::uint64_t hash) {
        std::atomic<std::uint64_t>& slot = m_slots[hash % kSlots];
        if (slot.load(std::memory_order_relaxed) == hash)
            return true;
        slot.store(hash, std::memory_order_relaxed);
        return false;
    }
    void Clear() {
        for (std::atomic<std::uint64_t>& slot : m_slots)
            slot.store(0, std::memory_order_relaxed);
    }

private:
    static constexpr std::size_t kSlots = 1024;
    std::array<std::atomic<std::uint64_t>, kSlots> m_slots {};
};

// What one thread used last of a cache, found again without a lock: one place for each hash, and the
// latest value stays. Values come from or go to the cache as well, so that it forgets them no later
// than after its next use when the cache is cleared.
template <class Value, std::size_t kSlots>
class RecentValues {
public:
    using Pointer = std::shared_ptr<const Value>;

    // Keeps at most kSlots values of at most maxBytes each. The cache must live longer.
    RecentValues(const LruCache<Value>& cache, std::int64_t maxBytes)
        : m_cache(cache), m_maxBytes(maxBytes), m_slots(kSlots) {}

    // Null when it is not there. Lent until the next call of any function.
    template <class Key>
    const Pointer* Find(std::uint64_t hash, const Key& key) {
        if (m_generation != m_cache.Generation()) {
            m_generation = m_cache.Generation();
            m_slots.assign(kSlots, nullptr);
        }
        const Pointer& value = m_slots[hash % kSlots];
        return value && value->Matches(key) ? &value : nullptr;
    }

    void Keep(std::uint64_t hash, const Pointer& value) {
        if (value->Bytes() <= m_maxBytes)
            m_slots[hash % kSlots] = value;
    }

private:
    const LruCache<Value>& m_cache;
    std::int64_t m_maxBytes;
    std::uint64_t m_generation = 0;
    std::vector<Pointer> m_slots;
};

} // namespace platform
