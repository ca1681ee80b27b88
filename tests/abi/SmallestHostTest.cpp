// SPDX-License-Identifier: BSD-3-Clause
// Runs the example for host authors as they would and looks at its picture.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace {

int RunSmallestHost(const std::string& module, const std::string& picture) {
    const std::string command =
        std::string(TELOP_SMALLEST_HOST) + " '" + module + "' '" + picture + "' >/dev/null 2>&1";
    return WEXITSTATUS(std::system(command.c_str()));
}

// The example's text starts at (40, 40), on a box of its own over a gradient.
TEST(SmallestHost, DrawsATextOnItsBoxAndNothingElse) {
    const TemporaryFolder folder;
    const auto path = folder.Path() / "picture.ppm";
    ASSERT_EQ(RunSmallestHost(TELOP_MODULE, path), 0);
    std::ifstream file(path, std::ios::binary);
    std::string magic;
    int width = 0, height = 0, full = 0;
    file >> magic >> width >> height >> full;
    file.get();
    const std::string rgb(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(magic, "P6");
    ASSERT_EQ(rgb.size(), static_cast<std::size_t>(width * height * 3));

    int box = 0, glyphs = 0, right = 40, bottom = 40;
    for (int i = 0; i < width * height; ++i) {
        const int x = i % width, y = i / width;
        const std::string pixel = rgb.substr(static_cast<std::size_t>(i) * 3, 3);
        if (pixel == std::string { static_cast<char>(80 + x * 120 / width),
                                   static_cast<char>(100 + y * 120 / height), 120 })
            continue;
        ASSERT_GE(std::min(x, y), 40);
        box += pixel == "\x10\x20\x60" ? 1 : 0;
        glyphs += pixel == "\xFF\xFF\xFF" ? 1 : 0;
        right = std::max(right, x + 1);
        bottom = std::max(bottom, y + 1);
    }
    const int area = (right - 40) * (bottom - 40);
    EXPECT_GT(bottom - 40, 48); // a line is higher than its size
    EXPECT_GT(right - 40, 200);
    EXPECT_GT(box, area / 2);
    EXPECT_GT(glyphs, area / 50);
}

TEST(SmallestHost, SaysWhenItCannot) {
    const TemporaryFolder folder;
    EXPECT_EQ(RunSmallestHost("no/such/module.so", folder.Path() / "a.ppm"), 1);
    EXPECT_EQ(RunSmallestHost(TELOP_MODULE, folder.Path() / "no/such/folder/a.ppm"), 1);
}

} // namespace
