// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/Document.h"

#include <cstring>
#include <random>

#include <gmock/gmock.h>

#include "host/text/TextField.h"
#include "platform/TextContext.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class DocumentTest : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return m_folder.Path() / name; }

    Document Sample() const {
        Document document;
        document.input = Path("shot.####.png");
        document.currentFrame = 1012;
        std::string why;
        auto& track = document.tracks.front();
        track.name = "Line";
        track.on = *FrameRanges::Parse("1001-1010,1020-", why);
        document.strings = { "Hügel", "", "12", "{frame:04}" };
        track.settings.dwFlags = TEXT_DIALOGUE | TEXT_BOX;
        track.settings.nFontSize = 48;
        track.settings.nOpacity = 80;
        std::strcpy(track.settings.szDialogue, "次の町まで\rあと少し。");
        std::strcpy(document.dialogs.infoPopup.szPreset[0], "PAN");
        std::strcpy(document.dialogs.characterPopup.szHistory[0], "美香");
        document.dialogs.infoPopup.bLock = 1;
        document.dialogs.nViewState2 = -7;
        return document;
    }

    // Through a file in the test's folder.
    Document Reloaded(const Document& document) const {
        std::string why;
        EXPECT_TRUE(document.Save(Path("a.telop"), why)) << why;
        auto loaded = Document::Load(Path("a.telop"), why);
        EXPECT_TRUE(loaded) << why;
        return loaded.value_or(Document {});
    }
    std::string JsonOf(const Document& document) const { return document.ToJson(m_folder.Path()); }

    // The sample's JSON with a part of it replaced, and why it is refused.
    std::string Refusal(const std::string& part, const std::string& by) const {
        auto json = JsonOf(Sample());
        const auto at = json.find(part);
        EXPECT_NE(at, std::string::npos) << part;
        json.replace(at, part.size(), by);
        std::string why = "(accepted)";
        m_folder.Write("bad.telop", json);
        const auto document = Document::Load(Path("bad.telop"), why);
        EXPECT_FALSE(document) << part << " -> " << by;
        return why;
    }

    TemporaryFolder m_folder;
};

TEST_F(DocumentTest, ComesBackWhole) {
    auto document = Sample();
    EXPECT_TRUE(Reloaded(document) == document);
    EXPECT_THAT(JsonOf(document), AllOf(HasSubstr("\"frames\": \"shot.####.png\""),
                                        HasSubstr("\"on\": \"1001-1010,1020-\""),
                                        HasSubstr("次の町まで"), HasSubstr("\"present\": true"),
                                        Not(HasSubstr("archive")), Not(HasSubstr("block"))));
    document = {};
    document.stringsPresent = false;
    document.tracks.front().on = {};
    EXPECT_TRUE(Reloaded(document) == document);
    document.tracks.front().on = FrameRanges::All();
    EXPECT_TRUE(Reloaded(document) == document);
    EXPECT_THAT(JsonOf(document),
                AllOf(HasSubstr("\"frames\": null"), HasSubstr("\"on\": \"all\"")));
}

TEST_F(DocumentTest, FramesAreRelativeWhereTheyMoveAlong) {
    const auto folder = m_folder.Path().string();
    const std::pair<std::string, std::string> rows[] {
        { folder + "/a.png", "a.png" },
        { folder + "/below/deep/a.%04d.png", "below/deep/a.%04d.png" },
        { folder + "/below/", "below/" },
        { folder + "/./x/../a.png", "a.png" },
        { folder + "-other/a.png", folder + "-other/a.png" },
    };
    for (const auto& [input, stored] : rows) {
        Document document;
        document.input = input;
        const auto json = JsonOf(document);
        EXPECT_THAT(json, HasSubstr("\"frames\": \"" + stored + "\""));
        std::string why;
        const auto moved = Document::FromJson(json, "/moved/here", why);
        ASSERT_TRUE(moved) << why;
        EXPECT_EQ(moved->input, (std::filesystem::path("/moved/here") / stored).string());
    }
    Document document;
    document.input = Path("caf\xE9/a.png"); // bytes that are no UTF-8
    EXPECT_EQ(Reloaded(document).input, document.input);
}

TEST_F(DocumentTest, EveryByteOfTheRecordsComesBack) {
    std::mt19937 random(20);
    for (const auto* encoding : { "UTF-8", "CP932", "EUC-JP", "GBK" }) {
        for (unsigned round = 0; round < 40; ++round) {
            Document document;
            document.encoding = *platform::TextEncoding::Find(encoding);
            const auto fill = [&](auto& record) {
                auto* bytes = reinterpret_cast<unsigned char*>(&record);
                for (std::size_t i = 0; i < sizeof record; ++i)
                    bytes[i] = random() % 40 <= round ? static_cast<unsigned char>(random()) : 0;
            };
            fill(document.tracks.front().settings);
            fill(document.dialogs);
            EXPECT_TRUE(Reloaded(document) == document) << encoding << ", round " << round;
        }
    }
}

TEST_F(DocumentTest, BytesBehindATextStayAndWhatAPersonChangesCounts) {
    auto document = Sample();
    std::memset(document.tracks.front().settings.szFontName, 'x',
                sizeof document.tracks.front().settings.szFontName);
    std::strcpy(document.tracks.front().settings.szFontName, "DejaVu Sans");
    std::strcpy(document.dialogs.infoPopup.szHistory[3], "behind an empty one");
    auto json = JsonOf(document);
    EXPECT_THAT(json, AllOf(HasSubstr("\"archive\": \""), HasSubstr("\"block\": \"")));
    for (const auto& [from, to] : { std::pair { "\"size\": 48", "\"size\": 52" },
                                    std::pair { "\"PAN\"", "\"FOLLOW\", \"PAN\"" } })
        json.replace(json.find(from), std::strlen(from), to);
    std::string why;
    const auto changed = Document::FromJson(json, m_folder.Path(), why);
    ASSERT_TRUE(changed) << why;
    document.tracks.front().settings.nFontSize = 52;
    std::strcpy(document.dialogs.infoPopup.szPreset[0], "FOLLOW");
    std::strcpy(document.dialogs.infoPopup.szPreset[1], "PAN");
    EXPECT_TRUE(*changed == document);
}

TEST_F(DocumentTest, TextsKeepTheirOwnEncoding) {
    Document document;
    document.encoding = *platform::TextEncoding::Find("CP932");
    std::strcpy(document.tracks.front().settings.szInfoText,
                "\x95\x5C\x8E\xA6"); // with a backslash's byte
    // Whatever the thread uses: it is asked nothing and keeps what it has.
    platform::TextContext context(*platform::TextEncoding::Find("EUC-JP"));
    const platform::TextScope scope(context);
    EXPECT_TRUE(Reloaded(document) == document);
    EXPECT_THAT(JsonOf(document), HasSubstr("\"info\": \"表示\""));
    EXPECT_EQ(platform::ApplicationTextEncoding(), "EUC-JP");
    EXPECT_THAT(Refusal("\"UTF-8\"", "\"CP-000\""), HasSubstr("encoding: 'CP-000'"));
}

TEST_F(DocumentTest, BadFilesAreRefusedWithTheKeyAndTheReason) {
    using Row = std::tuple<const char*, const char*, const char*>;
    for (const auto& [part, by, reason] : {
             Row { "{", "[", "not readable as JSON: " },
             Row { "telop-document", "other", "is no Telop document" },
             Row { "\"version\": 2", "\"version\": 3, \"colors\": 3", "newer Telop" },
             Row { "\"currentFrame\": 1012,", "", "currentFrame: is missing" },
             Row { "\"currentFrame\"", "\"frames\": \"b\", \"currentFrame\"",
                   "frames: given twice" },
             Row { "\"encoding\"", "\"rate\": \"23\", \"encoding\"", "rate: '23'" },
             Row { "\"encoding\"", "\"timecode\": \"1:00:00;00\", \"encoding\"",
                   "timecode: drop-frame" },
             Row { "\"encoding\"", "\"defines\": { \"frame\": \"\" }, \"encoding\"",
                   "defines.frame: {frame} has a meaning" },
             Row { "1012", "9e20", "currentFrame: expected a whole number" },
             Row { "\"shot.####.png\"", "\"\"", "frames: is no path" },
             Row { "\"shot.####.png\"", "\"a\\u0000b\"", "frames: is no path" },
             Row { "\"shot.####.png\"", "{\"base64\": \"a\"}", "frames.base64: is not base64" },
             Row { "1001-1010,1020-", "10-1", "tracks.track 1.on: '10-1': ends before it starts" },
             Row { "\"12\"", "12", "strings.texts: expected a text" },
             Row { "\"12\",", "", "strings.texts: expected a list of 4" },
             Row { "\"size\": 48,", "", "tracks.track 1.settings.size: is missing" },
             Row { "\"size\": 48", "\"size\": 48, \"bold\": 1",
                   "tracks.track 1.settings.bold: is unknown" },
             Row { "\"size\": 48", "\"size\": 48, \"archive\": \"AAAA\"",
                   "tracks.track 1.settings.archive: expected 480 bytes" },
             Row { "\"size\": 48", "\"size\": 48, \"archive\": \"AA-A\"",
                   "tracks.track 1.settings.archive: is not base64" },
             Row { "[\n        \"PAN\"\n      ]", "\"PAN\"", "dialogs.info.registered: expected" },
             Row { "\"PAN\"", "\"\"", "dialogs.info.registered: entry 1: is empty" },
             Row { "\"history\": []", "\"locked\": true", "dialogs.info.locked: given twice" },
             Row { "\"option\": 0", "\"option\": 4294967296", "dialogs.option: 4294967296 is" },
             Row { "-7", "\"7\"", "dialogs.viewState: expected a whole number" },
         })
        EXPECT_THAT(Refusal(part, by),
                    AllOf(HasSubstr(Path("bad.telop") + ": "), HasSubstr(reason)))
            << part << " -> " << by;
}

TEST_F(DocumentTest, TracksComeBackWithTheirCuesInOrder) {
    auto document = Sample();
    document.language = "ja";
    document.fallbacks = { "Noto Sans CJK JP" };
    std::string reason;
    const auto rate = *FrameRate::Parse("59.94", reason);
    document.clock = *ShotClock::Make(rate, false, "01:00:00;00", reason);
    document.defines = { { "shot", "{010}" } };
    auto& track = document.tracks.emplace_back(document.tracks.front());
    track.name = "Ω";
    track.isShown = false;
    track.isLocked = true;
    track.anchor = { AnchorPlace::kBottomRight, AnchorArea::kTitle80, { 2.5, true }, { -10 } };
    track.referenceHeight = 1080;
    track.cues = { { 20, 30, "two\nlines {frame}", "Hanako" }, { -5, 40, "long", "" } };
    auto json = JsonOf(document);
    track.SortCues();
    std::string why;
    const auto loaded = Document::FromJson(json, m_folder.Path(), why);
    ASSERT_TRUE(loaded) << why;
    EXPECT_TRUE(*loaded == document);
    const auto textAt = [&](std::int64_t frame) {
        const auto* cue = loaded->tracks[1].CueAt(frame);
        return cue ? cue->text : "(none)";
    };
    EXPECT_EQ(textAt(-6), "(none)");
    EXPECT_EQ(textAt(-5), "long");
    EXPECT_EQ(textAt(30), "two\nlines {frame}") << "of two the one that begins last";
    EXPECT_EQ(textAt(31), "long") << "behind a shorter one";
    EXPECT_EQ(textAt(41), "(none)");
    const auto refused = [&](std::string part, const char* by) {
        auto bad = json;
        bad.replace(bad.find(part), part.size(), by);
        EXPECT_FALSE(Document::FromJson(bad, m_folder.Path(), why)) << by;
        return why;
    };
    EXPECT_THAT(refused("\"Hanako\"", "7"), HasSubstr("tracks.track 2.cues.cue 1.character"));
    EXPECT_THAT(refused("40", "-40"), HasSubstr("cue 2.frames: ends before it starts"));
    EXPECT_THAT(refused("bottom-right", "below"), HasSubstr("anchor.place: 'below' is no place"));
    EXPECT_THAT(refused("2.5%", "2.5%%"), HasSubstr("anchor.margin: '2.5%%' is no margin"));
}

TEST_F(DocumentTest, AFirstVersionHasOneTrackWhoseBracesStayBraces) {
    auto json = JsonOf(Sample());
    const auto begin = json.find("\"settings\""), end = json.find("\"dialogs\"");
    const auto settings = json.substr(begin, json.rfind('}', json.rfind(']', end)) - begin);
    const auto tracks = json.find("\"tracks\"");
    json.replace(tracks, end - tracks, "\"textOn\": \"2-3\", " + settings + ", ");
    json.replace(json.find("\"version\": 2"), 12, "\"version\": 1");
    for (const auto& [typed, kept] :
         { std::pair { "a {b}", "a {{b}}" }, std::pair { "a {frame} {{", "a {frame} {{" } }) {
        auto old = json;
        old.replace(old.find("\"info\": \"\""), 10, std::string("\"info\": \"") + typed + "\"");
        std::string why;
        const auto document = Document::FromJson(old, m_folder.Path(), why);
        ASSERT_TRUE(document) << why;
        ASSERT_EQ(document->tracks.size(), 1U);
        EXPECT_EQ(document->tracks[0].on.ToString(), "2-3");
        EXPECT_EQ(document->tracks[0].settings.nFontSize, 48);
        EXPECT_STREQ(document->tracks[0].settings.szInfoText, kept);
    }
}

// Each of these took minutes, or the stack, when a reader looked at them after building them.
TEST_F(DocumentTest, OddShapesAreRefusedBeforeTheyAreBuilt) {
    std::string keys;
    for (int i = 0; i < 1'000'000; ++i)
        keys += "\"k" + std::to_string(i) + "\": 0, ";
    std::string objects;
    for (int i = 0; i < 1'000'001; ++i)
        objects += "{}, ";
    const auto deep = std::string(8'000'000, '[');
    EXPECT_THAT(Refusal("\"format\"", keys + "\"format\""), HasSubstr("has more than 64 keys"));
    EXPECT_THAT(Refusal("\"size\"", keys + "\"size\""),
                HasSubstr("settings: has more than 64 keys"));
    EXPECT_THAT(Refusal("\"PAN\"", objects + "\"PAN\""), HasSubstr("has more than 1000000 values"));
    EXPECT_THAT(Refusal("\"PAN\"", deep),
                HasSubstr("dialogs.info.registered: is nested more than 16 deep"));
}

TEST_F(DocumentTest, FilesThatAreNoDocumentsAreNamed) {
    m_folder.Write("archive.telop", std::string(480, '\0'));
    for (const auto& [file, reason] :
         { std::pair { "not.telop", "cannot be read" }, std::pair { ".", "cannot be read" },
           std::pair { "archive.telop", "the size of a settings archive" } }) {
        std::string why;
        EXPECT_FALSE(Document::Load(Path(file), why));
        EXPECT_THAT(why, AllOf(HasSubstr(Path(file)), HasSubstr(reason)));
    }
    std::string why;
    EXPECT_FALSE(Document().Save("/dev/full", why));
    EXPECT_THAT(why, HasSubstr("/dev/full: cannot be written"));
}

} // namespace
} // namespace host
