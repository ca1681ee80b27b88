// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/PamStream.h"

#include <functional>
#include <thread>

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

namespace host {
namespace {

using ::testing::HasSubstr;

// Reads all frames of what a thread sends, which may be more than the system's buffer holds.
StreamResult ReadAll(const std::string& stream, std::string& why,
                     const std::function<void(const Frame&)>& take) {
    int ends[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    std::thread feeder([&] {
        send(ends[1], stream.data(), stream.size(), MSG_NOSIGNAL);
        close(ends[1]);
    });
    PamReader reader(ends[0], "stdin");
    Frame frame;
    StreamResult result;
    while ((result = reader.Next(frame, why)) == StreamResult::kFrame)
        take(frame);
    close(ends[0]);
    feeder.join();
    return result;
}

std::string Pam(int width, int height, int depth, int greatest, const std::string& type,
                const std::string& pixels) {
    return "P7\nWIDTH " + std::to_string(width) + "\nHEIGHT " + std::to_string(height) +
           "\nDEPTH " + std::to_string(depth) + "\nMAXVAL " + std::to_string(greatest) +
           "\nTUPLTYPE " + type + "\nENDHDR\n" + pixels;
}

std::string Pixels(std::size_t count) {
    std::string bytes(count, 0);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    return bytes;
}

// What a writer makes of all frames of a stream.
std::string Copy(const std::string& stream) {
    std::FILE* const file = std::tmpfile();
    PamWriter writer(fileno(file));
    std::string why;
    const auto write = [&](const Frame& frame) {
        EXPECT_TRUE(writer.Write(frame, { 0, 0, 400, 300 }, why)) << why;
    };
    EXPECT_EQ(ReadAll(stream, why, write), StreamResult::kEnd) << why;
    std::string bytes(std::size_t(lseek(fileno(file), 0, SEEK_END)), 0);
    EXPECT_EQ(pread(fileno(file), bytes.data(), bytes.size(), 0), ssize_t(bytes.size()));
    std::fclose(file);
    return bytes;
}

TEST(PamStream, GivesEveryKindBackAsItCame) {
    const std::vector<std::string> types { "GRAYSCALE", "GRAYSCALE_ALPHA", "RGB", "RGB_ALPHA" };
    for (int depth = 1; depth <= 4; ++depth)
        for (const int greatest : { 255, 65535 }) {
            std::string stream;
            for (const int width : { 1, 7, 400 })
                stream += Pam(width, 300, depth, greatest, types[std::size_t(depth) - 1],
                              Pixels(std::size_t(width * 300 * depth * (greatest > 255 ? 2 : 1))));
            EXPECT_TRUE(Copy(stream) == stream) << depth << " values up to " << greatest;
        }
}

TEST(PamStream, ReadsHeadersAsOthersWriteThem) {
    const std::string rgb = Pam(2, 1, 3, 255, "RGB", "abcdef");
    for (const std::string& stream :
         { std::string("P6\n2 1\n255\nabcdef"), std::string("P6 # a comment\n 2\t1 255 abcdef"),
           std::string(
               "P7\n# comment\n\nDEPTH 3\nMAXVAL  255 \nHEIGHT 1\r\nWIDTH 2\nENDHDR\nabcdef") })
        EXPECT_EQ(Copy(stream + stream), rgb + rgb) << stream;
    EXPECT_EQ(Copy(std::string("P5 1 1 65535\n\1\2", 15)),
              Pam(1, 1, 1, 65535, "GRAYSCALE", "\1\2"));
    EXPECT_EQ(Copy(""), "");
}

TEST(PamStream, StaysRgbOnceAFrameWasColoured) {
    Frame frame { Image::Make(1, 1, kRgb24), {} };
    frame.header.color = ColorKind::kGrey;
    std::string why;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    PamWriter writer(ends[1]);
    const PixelRect all { 0, 0, 1, 1 };
    for (const std::string rgb : { "ggg", "ggb", "ggg" }) {
        std::ranges::copy(rgb, frame.image->Row(0).begin());
        EXPECT_TRUE(writer.Write(frame, all, why));
    }
    std::string bytes(1000, 0);
    bytes.resize(std::size_t(read(ends[0], bytes.data(), bytes.size())));
    EXPECT_EQ(bytes, Pam(1, 1, 1, 255, "GRAYSCALE", "g") + Pam(1, 1, 3, 255, "RGB", "ggb") +
                         Pam(1, 1, 3, 255, "RGB", "ggg"));
    close(ends[0]);
    EXPECT_FALSE(writer.Write(frame, all, why)) << "nobody reads";
    EXPECT_THAT(why, HasSubstr("the output stream: its reader has gone away"));
    close(ends[1]);
}

TEST(PamStream, NamesTheFrameAndWhatIsWrong) {
    std::string why;
    const std::string good = Pam(2, 2, 3, 255, "RGB", "123456789012");
    for (const auto& [stream, reason] : std::vector<std::pair<std::string, std::string>> {
             { good + good.substr(0, good.size() - 1), "stdin: frame 2: cut off in row 2 of 2" },
             { good + "P7\nWIDTH 2", "frame 2: cut off in its header" },
             { "P6 2 2 ", "frame 1: cut off in its header" },
             { good + "\n", "frame 2: " },
             { "BM", "begins with no PAM, PPM or PGM header" },
             { Pam(0, 2, 3, 255, "RGB", ""), "an impossible size, 0 x 2" },
             { Pam(32767, 32767, 3, 255, "RGB", ""), "an impossible size" },
             { Pam(2, 2, 3, 1023, "RGB", ""), "its greatest value is 1023" },
             { Pam(2, 2, 5, 255, "CMYKA", ""), "has 5 values in a pixel" },
             { Pam(2, 2, 3, 255, "RGB_ALPHA", ""), "its pixels are RGB_ALPHA, but have 3 values" },
             { "P7\nWIDTH 99999999999999999999\n", "'WIDTH 99999999999999999999' is no line" },
             { "P7\nCOLOUR 3\n", "'COLOUR 3' is no line of a PAM header" },
             { "P7\n" + std::string(1000, '\n'), "its header has no end" },
             { "P5 -1 1 255 ", "an impossible size, -1 x 1" },
             { "P5 1x 1 255 ", "'1x' is no number in its header" } }) {
        EXPECT_EQ(ReadAll(stream, why, [](const Frame&) {}), StreamResult::kFailed);
        EXPECT_THAT(why, HasSubstr(reason)) << stream;
    }
    PamReader closed(-1);
    Frame frame;
    EXPECT_EQ(closed.Next(frame, why), StreamResult::kFailed);
    EXPECT_THAT(why, HasSubstr("frame 1: cannot be read: Bad file descriptor"));
}

} // namespace
} // namespace host
