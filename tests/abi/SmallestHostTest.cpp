// SPDX-License-Identifier: BSD-3-Clause
// Runs the example for host authors as they would and looks at its picture.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace {

int RunSmallestHost(const std::string& module, const std::string& picture) {
    const std::string command =
        std::string(TELOP_SMALLEST_HOST) + " '" + module + "' '" + picture + "' >/dev/null 2>&1";
    return WEXITSTATUS(std::system(command.c_str()));
}

struct Picture {
    int width = 0;
    int height = 0;
    std::string rgb;
    std::string At(int x, int y) const {
        return rgb.substr(static_cast<std::size_t>(y * width + x) * 3, 3);
    }
};

Picture ReadPicture(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string magic;
    int full = 0;
    Picture picture;
    file >> magic >> picture.width >> picture.height >> full;
    file.get();
    std::ostringstream rest;
    rest << file.rdbuf();
    picture.rgb = rest.str();
    EXPECT_EQ(magic, "P6");
    EXPECT_EQ(full, 255);
    return picture;
}

std::string Background(const Picture& picture, int x, int y) {
    return { static_cast<char>(80 + x * 120 / picture.width),
             static_cast<char>(100 + y * 120 / picture.height), 120 };
}

TEST(SmallestHost, DrawsATextOnItsBoxAndNothingElse) {
    const TemporaryFolder folder;
    const auto path = folder.Path() / "picture.ppm";
    ASSERT_EQ(RunSmallestHost(TELOP_MODULE, path), 0);
    const Picture picture = ReadPicture(path);
    ASSERT_EQ(picture.rgb.size(), static_cast<std::size_t>(picture.width * picture.height * 3));

    const std::string box = "\x10\x20\x60";
    const std::string glyph = "\xFF\xFF\xFF";
    int boxPixels = 0;
    int glyphPixels = 0;
    int right = 40;
    int bottom = 40;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const std::string pixel = picture.At(x, y);
            if (pixel == Background(picture, x, y))
                continue;
            ASSERT_GE(x, 40);
            ASSERT_GE(y, 40);
            boxPixels += pixel == box ? 1 : 0;
            glyphPixels += pixel == glyph ? 1 : 0;
            right = std::max(right, x + 1);
            bottom = std::max(bottom, y + 1);
        }
    }
    const int area = (right - 40) * (bottom - 40);
    EXPECT_GT(bottom - 40, 48); // a line is higher than its size
    EXPECT_GT(right - 40, 200);
    EXPECT_GT(boxPixels, area / 2);
    EXPECT_GT(glyphPixels, area / 50);
}

TEST(SmallestHost, SaysWhenItCannot) {
    const TemporaryFolder folder;
    EXPECT_EQ(RunSmallestHost("no/such/module.so", folder.Path() / "a.ppm"), 1);
    EXPECT_EQ(RunSmallestHost(TELOP_MODULE, folder.Path() / "no/such/folder/a.ppm"), 1);
}

} // namespace
