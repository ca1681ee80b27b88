// SPDX-License-Identifier: BSD-3-Clause
// Documents through the real program: what it draws is what the window's export draws.
#include "TelopProgram.h"

#include "host/document/Document.h"
#include "host/jobs/DocumentExport.h"
#include "host/text/TextField.h"

namespace telop {
namespace {

class RenderDocument : public TelopProgram {
protected:
    RenderDocument() {
        std::string why;
        m_effect = host::Effect::Make(host::Plugin::Load(TELOP_BUNDLE, why), why);
        m_document.TakeFrom(*m_effect);
        m_document.input = Path("a").string();
        m_document.strings = { "", "", "12", "{frame}" };
        m_document.tracks.front().on = *host::FrameRanges::Parse("2-3", why);
        m_document.tracks.front().settings.nOpacity = 90;
    }

    void Save(const std::string& name = "shot.telop") {
        std::string why;
        ASSERT_TRUE(m_document.Save(Path(name), why)) << why;
    }

    std::unique_ptr<host::Effect> m_effect;
    host::Document m_document;
};

TEST_F(RenderDocument, DrawsWhatAnExportDraws) {
    WriteSequence("a", 1, 4);
    Save();
    host::PlanProblem problem;
    const auto made = host::DocumentExport::Make(m_document, *m_effect,
                                                 { .output = Path("window/").string() }, problem);
    ASSERT_TRUE(made) << problem.text;
    host::RunListener listener;
    EXPECT_EQ(made->Run(listener, host::CancelToken()).written, 4);

    Run("render --document shot.telop b/");
    EXPECT_EQ(Files("b"), Files("window"));
    for (const auto& name : Files("b"))
        EXPECT_EQ(Contents("b/" + name), Contents("window/" + name)) << name;
    for (int frame = 1; frame <= 4; ++frame) {
        const auto name = "/shot." + std::to_string(frame) + ".png";
        EXPECT_EQ(Compare(ReadPicture("a" + name), ReadPicture("b" + name)).pixels > 0,
                  frame == 2 || frame == 3)
            << frame;
    }
}

TEST_F(RenderDocument, OptionsBesideItCountMore) {
    WriteSequence("a", 1, 4);
    WritePicture("single.png", MakeFrame(9));
    Save();
    const auto drawn = [&](const std::string& options, const std::string& folder) {
        Run("render --document shot.telop " + options + " " + folder + "/");
        return Contents(folder + "/shot.2.png");
    };
    const auto plain = drawn("", "plain");
    EXPECT_EQ(drawn("--strings ,,12,2", "same"), plain);
    EXPECT_NE(drawn("--strings ,,13,2", "strings"), plain);
    m_document.stringsPresent = false;
    Save();
    EXPECT_EQ(drawn("", "absent"), drawn("--strings ,,,", "empty"));
    m_document.stringsPresent = true;
    Save();
    EXPECT_NE(drawn("--info PAN", "info"), plain);
    EXPECT_NE(drawn("--opacity 20", "opacity"), plain);
    EXPECT_EQ(Compare(ReadPicture("a/shot.1.png"), ReadPicture("plain/shot.1.png")).pixels, 0);
    drawn("--apply 1", "apply");
    EXPECT_GT(Compare(ReadPicture("a/shot.1.png"), ReadPicture("apply/shot.1.png")).pixels, 0);
    Run("render --document shot.telop single.png o.png");
    EXPECT_TRUE(std::filesystem::exists(Path("o.png"))) << "an INPUT stands in for the document's";
}

TEST_F(RenderDocument, BringsItsEncoding) {
    WriteSequence("a", 2, 2);
    std::string why;
    m_document.tracks.front().settings.dwFlags = TEXT_INFO | TEXT_BOX;
    ASSERT_TRUE(host::SetField(m_document.tracks.front().settings.szInfoText, "info", "表示", why))
        << why;
    Save("utf8.telop");
    auto json = Contents("utf8.telop");
    json.replace(json.find("\"UTF-8\""), 7, "\"CP932\"");
    Write("cp932.telop", json);
    Run("render --document utf8.telop u/");
    Run("render --document cp932.telop c/");
    EXPECT_EQ(Contents("u/shot.2.png"), Contents("c/shot.2.png"));
}

TEST_F(RenderDocument, SeveralTextsAreDrawnOneAfterTheOther) {
    WriteSequence("a", 1, 3);
    const std::string pan = "--info 'PAN {frame}' --at 9,9 --box none ";
    const std::string name = "--character Hanako --size 30 --at 20,30 --box red --apply 2- ";
    Run("render " + pan + "a/ pan/");
    Run("render " + name + "pan/ expected/");
    Run("render " + pan + "--then --font '' " + name + "--save-document s.telop a/ both/");
    Run("render --document s.telop again/");
    Run("render --document s.telop --track Direction first/");
    Run("render --document s.telop --track Direction --opacity 0 none/");
    for (const std::string file : { "/shot.1.png", "/shot.2.png", "/shot.3.png" }) {
        EXPECT_EQ(Contents("both" + file), Contents("expected" + file)) << file;
        EXPECT_EQ(Contents("again" + file), Contents("expected" + file)) << file;
        EXPECT_EQ(Contents("first" + file), Contents("pan" + file)) << file;
        EXPECT_EQ(Contents("none" + file), Contents("a" + file)) << file;
    }
    ExpectEndings("render --document",
                  { { "s.telop --track Score b/", 2, "no track 'Score'; it has 'Direction', 'Ch" },
                    { "s.telop --info x b/", 2, "--track says which" } });
}

TEST_F(RenderDocument, IsDrawnAlikeInEveryLocale) {
    WritePicture("a.png", MakeFrame(0, host::kRgb24, 500, 120));
    const auto draw = [&](const char* locale, const std::string& options) {
        auto run = Start("render --overwrite " + options + " a.png b.png", "/dev/null",
                         [locale] { setenv("LC_ALL", locale, 1); });
        const auto outcome = run.Wait();
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        return Contents("b.png");
    };
    const std::string text = "--character 直骨 --off --font 'Liberation Sans' --save-document ";
    const auto japanese = draw("ja_JP.UTF-8", text + "ja.telop");
    const auto english = draw("C.UTF-8", text + "en.telop");
    const auto chinese =
        draw("zh_CN.UTF-8", text + "zh.telop"); // no such words, but other ideographs
    EXPECT_NE(japanese, english);
    EXPECT_NE(english, chinese);
    for (const char* locale : { "C.UTF-8", "ja_JP.UTF-8" }) {
        EXPECT_TRUE(draw(locale, "--document ja.telop") == japanese) << locale;
        EXPECT_TRUE(draw(locale, "--document en.telop") == english) << locale;
        EXPECT_TRUE(draw(locale, "--document zh.telop") == chinese) << locale;
    }
    EXPECT_EQ(draw("C.UTF-8", "--document en.telop --language ja"), japanese);
    Run("render --language a/b --info x a.png c.png", { .code = 2, .says = "--language" });
}

TEST_F(RenderDocument, FallbacksAreNamedKeptAndChecked) {
    WritePicture("a.png", MakeFrame(0, host::kRgb24, 500, 120));
    const auto draw = [&](const std::string& options, const char* says = "") {
        Run("render --overwrite " + options + " a.png b.png", { .says = says });
        return Contents("b.png");
    };
    const std::string text = "--info 永遠 --font 'Liberation Sans' ";
    const auto serif = draw(text + "--fallback 'Noto Serif CJK JP'");
    EXPECT_NE(draw(text), serif);
    EXPECT_EQ(draw(text + "--fallback 'Nirgendwo , Noto Serif CJK JP' --save-document s.telop",
                   "'Nirgendwo'"),
              serif);
    EXPECT_EQ(draw("--document s.telop", "'Nirgendwo'"), serif);
    Run("render --document s.telop --strict-fonts a.png c.png",
        { .code = 4, .says = "'Nirgendwo'" });
    Run("render --document s.telop --strict-fonts --fallback 'DejaVu Sans' a.png c.png");
    Run("render --fallback A,,B --info x a.png d.png", { .code = 2, .says = "--fallback" });
}

TEST_F(RenderDocument, CountersStandStill) {
    WriteSequence("a", 10, 11);
    const std::string look =
        "render --overwrite --font 'Liberation Serif' --size 70 --opacity 100 --box '#FF0000' ";
    const auto widths = [&](const std::string& options) {
        Run(look + options + " a b/");
        std::vector<int> widths;
        for (const std::string file : { "/shot.10.png", "/shot.11.png" })
            widths.push_back(
                Compare(ReadPicture("a" + file), ReadPicture("b" + file)).bounds.right);
        return widths;
    };
    const auto counter = widths("--info {frame}"),
               score = widths("--score 1 --strings ,,1,{frame}");
    EXPECT_EQ(counter[0], counter[1]);
    EXPECT_EQ(score[0], score[1]);
    EXPECT_EQ(counter[0], widths("--info 10")[0]);
    EXPECT_GT(counter[1], widths("--info 11")[1]) << "which is kerned";
    // As does the room that they are measured to take.
    const auto anchored = widths("--anchor top-left --info {frame}");
    EXPECT_EQ(anchored[0], anchored[1]);
}

TEST_F(RenderDocument, AnchoredTextsStandAtTheEdgeToThePixel) {
    WritePicture("a.png", MakeFrame(0, host::kRgb24, 300, 200));
    const auto box = [&](const std::string& options) {
        Run("render --info {frame}g --box '#FF0000' --opacity 100 --overwrite " + options +
            " a.png b.png");
        return Compare(ReadPicture("a.png"), ReadPicture("b.png")).bounds;
    };
    const auto corner = box("--size 20 --at 0,0");
    const auto width = corner.right, height = corner.bottom;
    const auto expect = [&](const std::string& options, int left, int top) {
        const auto there = box("--size 20 " + options);
        EXPECT_EQ(there.left, left) << options;
        EXPECT_EQ(there.top, top) << options;
        EXPECT_EQ(there.right, left + width) << options;
        EXPECT_EQ(there.bottom, top + height) << options;
    };
    expect("--anchor bottom-right", 300 - width, 200 - height);
    expect("--anchor top@title80 --margin 0,5%", 30 + (240 - width) / 2, 20 + 10);
    expect("--anchor left@action --margin 7,-3", 11 + 7, 7 + (186 - height) / 2 - 3);
    expect("--anchor centre", (300 - width) / 2, (200 - height) / 2);
    // Of half the reference's height: the text is half as large, and stands half as far.
    const auto large = box("--size 40 --at 20,20 --reference-height 400");
    EXPECT_EQ(large.left, 10);
    EXPECT_EQ(large.top, 10);
    EXPECT_EQ(large.right, 10 + width);
    EXPECT_EQ(large.bottom, 10 + height);
}

TEST_F(RenderDocument, TroubleIsNamed) {
    WriteSequence("a", 1, 2);
    Save();
    m_document.strings[2] = "{cut}";
    Save("token.telop");
    m_document.input.clear();
    Save("empty.telop");
    ExpectEndings("render --document",
                  {
                      { "shot.telop", 2, "OUTPUT is missing" },
                      { "empty.telop b/", 3, "empty.telop: has no frames" },
                      { "token.telop b/", 3, "information string 3: '{cut}' is no token" },
                      { "shot.telop --settings s b/", 2, "--settings" },
                      { "shot.telop --apply - b/", 2, "--apply" },
                  });
    EXPECT_FALSE(std::filesystem::exists(Path("b")));
}

} // namespace
} // namespace telop
