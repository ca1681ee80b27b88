// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/PamStream.h"

#include <thread>

#include <gmock/gmock.h>
#include <unistd.h>

namespace host {
namespace {

using ::testing::HasSubstr;

// A pipe that a thread fills, so that it may hold more than the system's buffer.
class Source {
public:
    explicit Source(std::string bytes) {
        EXPECT_EQ(pipe(m_ends), 0);
        m_feeder = std::thread([this, bytes = std::move(bytes)] {
            for (std::size_t at = 0; at < bytes.size();) {
                const auto wrote = write(m_ends[1], &bytes[at], bytes.size() - at);
                if (wrote <= 0)
                    break;
                at += std::size_t(wrote);
            }
            close(m_ends[1]);
        });
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() {
        char rest[4096];
        while (read(m_ends[0], rest, sizeof rest) > 0) {
        }
        m_feeder.join();
        close(m_ends[0]);
    }
    int Get() const { return m_ends[0]; }

private:
    int m_ends[2] {};
    std::thread m_feeder;
};

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
std::string Copy(const std::string& stream, const PixelRect& touched = {}) {
    const Source source(stream);
    PamReader reader(source.Get());
    std::FILE* const file = std::tmpfile();
    PamWriter writer(fileno(file));
    Frame frame;
    std::string why;
    StreamResult result;
    while ((result = reader.Next(frame, why)) == StreamResult::kFrame)
        EXPECT_TRUE(writer.Write(frame, touched, why)) << why;
    EXPECT_EQ(result, StreamResult::kEnd) << why;
    std::string bytes(std::size_t(lseek(fileno(file), 0, SEEK_END)), 0);
    EXPECT_EQ(pread(fileno(file), bytes.data(), bytes.size(), 0), ssize_t(bytes.size()));
    std::fclose(file);
    return bytes;
}

std::string ErrorOf(const std::string& stream) {
    const Source source(stream);
    PamReader reader(source.Get(), "stdin");
    Frame frame;
    std::string why;
    StreamResult result;
    while ((result = reader.Next(frame, why)) == StreamResult::kFrame) {
    }
    EXPECT_EQ(result, StreamResult::kFailed);
    return why;
}

TEST(PamStream, GivesEveryKindBackAsItCame) {
    const std::vector<std::string> types { "GRAYSCALE", "GRAYSCALE_ALPHA", "RGB", "RGB_ALPHA" };
    for (int depth = 1; depth <= 4; ++depth)
        for (const int greatest : { 255, 65535 }) {
            std::string stream;
            for (const int width : { 1, 7, 400 })
                stream += Pam(width, 300, depth, greatest, types[std::size_t(depth) - 1],
                              Pixels(std::size_t(width * 300 * depth * (greatest > 255 ? 2 : 1))));
            const PixelRect all { 0, 0, 400, 300 };
            EXPECT_TRUE(Copy(stream, all) == stream) << depth << " values up to " << greatest;
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
    const std::string stream = Pam(1, 1, 1, 255, "GRAYSCALE", "g");
    const Source source(stream);
    PamReader reader(source.Get());
    Frame frame;
    std::string why;
    ASSERT_EQ(reader.Next(frame, why), StreamResult::kFrame) << why;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    PamWriter writer(ends[1]);
    const PixelRect all { 0, 0, 1, 1 };
    EXPECT_TRUE(writer.Write(frame, all, why));
    frame.image->Row(0)[2] = 'b';
    EXPECT_TRUE(writer.Write(frame, all, why));
    frame.image->Row(0)[2] = 'g';
    EXPECT_TRUE(writer.Write(frame, all, why));
    std::string bytes(1000, 0);
    bytes.resize(std::size_t(read(ends[0], bytes.data(), bytes.size())));
    EXPECT_EQ(bytes, stream + Pam(1, 1, 3, 255, "RGB", "ggb") + Pam(1, 1, 3, 255, "RGB", "ggg"));
    close(ends[0]);
    EXPECT_FALSE(writer.Write(frame, all, why)) << "nobody reads";
    EXPECT_THAT(why, HasSubstr("the output stream: its reader has gone away"));
    close(ends[1]);
}

TEST(PamStream, NamesTheFrameAndWhatIsWrong) {
    const std::string good = Pam(2, 2, 3, 255, "RGB", "123456789012");
    for (const auto& [stream, reason] : std::vector<std::pair<std::string, std::string>> {
             { good + good.substr(0, good.size() - 1), "stdin: frame 2: cut off in row 2 of 2" },
             { good + "P7\nWIDTH 2", "frame 2: cut off in its header" },
             { "P", "frame 1: cut off in its header" },
             { "P6 2 2 ", "frame 1: cut off in its header" },
             { good + "\n", "frame 2: " },
             { "BM", "begins with no PAM, PPM or PGM header" },
             { Pam(0, 2, 3, 255, "RGB", ""), "an impossible size, 0 x 2" },
             { Pam(32767, 32767, 3, 255, "RGB", ""), "an impossible size" },
             { Pam(2, 2, 3, 1023, "RGB", ""), "its greatest value is 1023" },
             { Pam(2, 2, 5, 255, "CMYKA", ""), "has 5 values in a pixel" },
             { Pam(2, 2, 3, 255, "RGB_ALPHA", ""), "its pixels are RGB_ALPHA, but have 3 values" },
             { "P7\nWIDTH 99999999999999999999\n", "'WIDTH 99999999999999999999' is no line" },
             { "P7\nWIDTH two\n", "is no line of a PAM header" },
             { "P7\nCOLOUR 3\n", "'COLOUR 3' is no line of a PAM header" },
             { "P7\n" + std::string(1000, '\n'), "its header has no end" },
             { "P5 -1 1 255 ", "an impossible size, -1 x 1" },
             { "P5 1x 1 255 ", "'1x' is no number in its header" } })
        EXPECT_THAT(ErrorOf(stream), HasSubstr(reason)) << stream;
    PamReader closed(-1);
    Frame frame;
    std::string why;
    EXPECT_EQ(closed.Next(frame, why), StreamResult::kFailed);
    EXPECT_THAT(why, HasSubstr("frame 1: cannot be read: Bad file descriptor"));
}

} // namespace
} // namespace host
