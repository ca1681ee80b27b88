// SPDX-License-Identifier: BSD-3-Clause
// The plain blend against the formulas with signed numbers and floor division, and the vector
// versions against the plain one, byte for byte over the whole memory.
#include "render/BlendKernels.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace render;

std::int64_t FloorDiv(std::int64_t a, std::int64_t b) {
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

std::int64_t Blended(std::int64_t d, std::int64_t s, std::int64_t weight, int depth) {
    return depth == 64 ? (d + FloorDiv(weight * 257 * (s * 257 - d), 65536)) & 0xFFFF
                       : d + FloorDiv(weight * (s - d), 256);
}

// One pixel blended by the version under test: channels alpha, red, green, blue.
std::array<std::uint16_t, 4> BlendOne(int depth, std::array<std::uint16_t, 4> d,
                                      std::array<std::uint8_t, 4> source, BlendJob job) {
    std::array<std::uint8_t, 4> narrow;
    std::copy(d.begin(), d.end(), narrow.begin());
    std::uint8_t* const bytes =
        depth == 64 ? reinterpret_cast<std::uint8_t*>(d.data()) : narrow.data();
    job.dst = bytes;
    job.dstReach = job.dstRowBytes = depth / 8;
    job.depth = depth;
    job.order = { 0, 1, 2, 3 };
    job.src = source.data();
    job.srcRowBytes = 4;
    job.width = job.height = 1;
    BlendText(job, BlendVersion::kPlain);
    if (depth != 64)
        std::copy(narrow.begin(), narrow.end(), d.begin());
    return d;
}

BlendJob Style(std::uint8_t text, int opacity, bool box) {
    BlendJob job;
    job.red = job.green = job.blue = text;
    job.opacity = static_cast<std::uint8_t>(opacity);
    job.box = box;
    return job;
}

TEST(BlendPlainTest, FollowsTheFormulasOverAllCoveragesAndOpacities) {
    std::mt19937 random(1);
    for (int i = 0; i < 65536; ++i) {
        const int opacity = i >> 8;
        const auto s1 = static_cast<std::uint8_t>(i);
        const auto text = static_cast<std::uint8_t>(random());
        for (const int depth : { 32, 64 }) {
            const auto d = static_cast<std::uint16_t>(random() & (depth == 64 ? 0xFFFF : 0xFF));
            const std::array<std::uint16_t, 4> before { 7, d, d, d };
            const std::uint16_t full = depth == 64 ? 65535 : 255;
            const auto plain =
                BlendOne(depth, before, { 0, s1, 3, 9 }, Style(text, opacity, false));
            const auto box = BlendOne(depth, before, { 0, s1, s1, 9 }, Style(text, opacity, true));
            const auto covered = Blended(d, text, opacity * (255 - s1) >> 8, depth);
            const auto mixed =
                opacity < 255 ? Blended(d, s1, opacity, depth) : s1 * (depth == 64 ? 257 : 1);
            ASSERT_EQ(plain[1], covered) << depth << ' ' << opacity << ' ' << +s1 << ' ' << d;
            ASSERT_EQ(plain[3], covered);
            ASSERT_EQ(plain[0], full);
            ASSERT_EQ(box[2], mixed) << depth << ' ' << opacity << ' ' << +s1 << ' ' << d;
            ASSERT_EQ(box[0], full);
        }
    }
}

TEST(BlendPlainTest, LeavesTheKeyColorAloneAndOnlyThat) {
    const std::array<std::uint16_t, 4> before { 1, 2, 3, 4 };
    EXPECT_EQ(BlendOne(32, before, { 0, 0xFE, 0xFE, 0xFE }, Style(9, 255, true)), before);
    EXPECT_EQ(BlendOne(64, before, { 9, 0xFE, 0xFE, 0xFE }, Style(9, 255, false)), before);
    for (std::size_t channel = 1; channel < 4; ++channel) {
        std::array<std::uint8_t, 4> source { 0xFE, 0xFE, 0xFE, 0xFE };
        source[channel] = 0xFD;
        EXPECT_EQ(BlendOne(32, before, source, Style(9, 255, false))[0], 255);
    }
    // White over black at full coverage stops at 253.
    EXPECT_EQ(BlendOne(32, { 0, 0, 0, 0 }, { 0, 0, 0, 0 }, Style(255, 255, false))[1], 253);
}

// A job over memory of its own, at random but for what is given.
struct RandomJob {
    RandomJob(int depth, int width, std::mt19937& random) {
        const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
        const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
        job.depth = depth;
        job.width = width;
        job.height = 1 + below(3);
        job.dstReach = width * depth / 8;
        job.dstRowBytes = job.dstReach + below(20);
        std::array<int, 4> places { 0, 1, 2, 3 };
        std::shuffle(places.begin(), places.end() - (depth == 24 ? 1 : 0), random);
        const bool alpha = depth != 24 && below(4) != 0;
        job.order = { alpha ? places[3] : -1, places[0], places[1], places[2] };
        job.box = below(2) == 0;
        job.opacity = below(3) == 0 ? 255 : byte();
        for (std::uint8_t* color : { &job.red, &job.green, &job.blue })
            *color = byte();
        dst.resize(static_cast<std::size_t>(job.height * job.dstRowBytes + 96));
        std::generate(dst.begin(), dst.end(), byte);
        offset = below(33);
        // Noise, glyphs on the key colour, or all but the key colour; exactly the bytes that may be read.
        src.resize(static_cast<std::size_t>(4 * width * job.height));
        const int kind = below(3);
        for (std::size_t i = 0; i < src.size(); i += 4) {
            const bool key = kind > 0 && below(kind == 1 ? 2 : 30) != 0;
            for (std::size_t at = 0; at < 4; ++at)
                src[i + at] = at > 0 && (key || below(8) == 0) ? 0xFE : byte();
        }
        job.srcRowBytes = below(2) == 0 ? -4 * width : 4 * width; // bottom up
        job.src = src.data() + (job.srcRowBytes < 0 ? 4 * width * (job.height - 1) : 0);
    }

    std::vector<std::uint8_t> Blend(BlendVersion version) const {
        std::vector<std::uint8_t> memory = dst;
        BlendJob copy = job;
        copy.dst = memory.data() + offset;
        BlendText(copy, version);
        return memory;
    }

    BlendJob job;
    std::ptrdiff_t offset;
    std::vector<std::uint8_t> dst, src;
};

// Every width, and every weight with colours that reach the ends of their ranges.
TEST(BlendVersionsTest, GiveTheSameBytes) {
    std::mt19937 random(2);
    const auto expectSame = [](const RandomJob& job) {
        const std::vector<std::uint8_t> plain = job.Blend(BlendVersion::kPlain);
        for (const BlendVersion version : { BlendVersion::kSse41, BlendVersion::kAvx2 })
            if (HasBlendVersion(version))
                ASSERT_EQ(job.Blend(version), plain)
                    << "version " << static_cast<int>(version) << " depth " << job.job.depth
                    << " width " << job.job.width << " opacity " << +job.job.opacity;
    };
    for (const int depth : { 24, 32, 64 }) {
        for (int i = 0; i < 70 * 40; ++i)
            expectSame(RandomJob(depth, 1 + i / 40, random));
        for (int i = 0; i < 512; ++i) {
            RandomJob weighted(depth, 256, random);
            weighted.job.opacity = static_cast<std::uint8_t>(i / 2);
            weighted.job.box = i % 2 == 0;
            weighted.job.red = i % 3 == 0 ? 255 : weighted.job.red;
            weighted.job.green = i % 3 == 1 ? 0 : weighted.job.green;
            expectSame(weighted);
        }
    }
}

} // namespace
