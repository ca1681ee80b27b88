// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/OtherFormats.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/Message.h"

namespace host {
namespace {

constexpr std::array<std::string_view, 12> kVideos { ".mov", ".mp4",  ".m4v", ".mkv",
                                                     ".avi", ".webm", ".mxf", ".mpg",
                                                     ".ts",  ".wmv",  ".gif", ".y4m" };
constexpr std::array<std::string_view, 14> kPictures { ".jpg", ".jpeg", ".tif", ".tiff", ".exr",
                                                       ".dpx", ".tga",  ".bmp", ".webp", ".psd",
                                                       ".sgi", ".heic", ".jp2", ".svg" };

enum class Other { kUnknown, kVideo, kPicture };

Other OtherOf(const std::filesystem::path& file) {
    auto ending = file.extension().native();
    for (char& c : ending)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return std::ranges::find(kVideos, ending) != kVideos.end()       ? Other::kVideo
           : std::ranges::find(kPictures, ending) != kPictures.end() ? Other::kPicture
                                                                     : Other::kUnknown;
}

} // namespace

std::string WayFrom(const std::filesystem::path& input) {
    const auto name = Printable(input.filename().native());
    switch (OtherOf(input)) {
    case Other::kVideo:
        return "a video comes through a pipe: ffmpeg -i " + name +
               " -f image2pipe -c:v pam - | telop render ... - OUTPUT";
    case Other::kPicture:
        return "frames are read as PNG; convert it first, for example with ffmpeg -i " + name +
               " " + Printable(input.stem().native()) + ".png";
    default:
        return {};
    }
}

std::string WayTo(const std::filesystem::path& output) {
    return OtherOf(output) == Other::kVideo ? "a video comes of a pipe: telop render ... INPUT - | "
                                              "ffmpeg -f image2pipe -c:v pam "
                                              "-i - " +
                                                  Printable(output.filename().native())
                                            : std::string();
}

} // namespace host
