// SPDX-License-Identifier: BSD-3-Clause
// Strings, pictures, cursors and icons out of a bundle that the test writes.
#include <QBuffer>
#include <QImage>

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxEvents.h"
#include "huxCommon/huxUtility/HuxResource.h"
#include "huxCommon/huxUtility/VamBundle.h"
#include "huxCommon/huxUtility/VamCursor.h"
#include "huxCommon/huxUtility/VamWindowItem.h"
#include "platform/ui/Cursors.h"
#include "platform/ui/UIFixture.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace {

std::string Png(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::black);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

std::string Pct(int width, int height) {
    return std::string(512, '\0') + Png(width, height);
}

class VamResources : public test::UIFixture {
protected:
    VamResources() {
        m_folder.Write("T.bundle/Contents/Info.json",
                       R"({"identifier": "org.telop.test", "name": "Test", "version": "1"})");
        m_bundle = HuxCFObject<platform::CFBundleRef>::Adopt(platform::CFBundleCreate(Root()));
    }
    ~VamResources() override { HuxResource::UnregisterIconRef(); }

    std::filesystem::path Root() const { return m_folder.Path() / "T.bundle"; }
    std::filesystem::path Put(const std::string& name, const std::string& bytes) const {
        return m_folder.Write("T.bundle/Contents/Resources/" + name, bytes);
    }
    platform::CFBundleRef Bundle() const { return m_bundle.Get(); }
    // The sides of the picture; 0 for none.
    int WidthOfPict(const char* name, const char* subDir) const {
        const HuxString folder(subDir);
        const platform::PicHandle picture = vamLoadPictFromBundle(
            Bundle(), HuxString(name).GetCFString(), subDir ? folder.GetCFString() : nullptr);
        const int width = platform::GetPictureBounds(picture).right;
        platform::KillPicture(picture);
        return width;
    }
    bool Register(const char* name) const {
        return vamRegisterNamedCursorFromBundle(Bundle(), HuxString(name).GetCFString(), nullptr);
    }

private:
    const TemporaryFolder m_folder;
    HuxCFObject<platform::CFBundleRef> m_bundle;
};

TEST_F(VamResources, StringsFallBackToTheirKey) {
    const ScopedEnvironment english("LANGUAGE", "en");
    Put("en.lproj/Localizable.strings", "\"IDS_A\" = \"text\";");
    const auto text = [](platform::CFBundleRef bundle, const char* key) {
        return HuxString::Adopt(vamLoadStringFromBundle(bundle, HuxString(key).GetCFString()));
    };
    EXPECT_EQ(text(Bundle(), "IDS_A").GetUTF8(), "text");
    EXPECT_EQ(text(Bundle(), "IDS_B").GetUTF8(), "IDS_B");
    EXPECT_EQ(text(nullptr, "IDS_A").GetUTF8(), "IDS_A");
}

TEST_F(VamResources, PicturesFollowAHeader) {
    Put("whole.pct", Pct(7, 5));
    Put("sub/deeper.pct", Pct(3, 3));
    Put("headless.pct", Png(7, 5));
    Put("short.pct", std::string(511, '\0'));
    Put("empty.pct", std::string(512, '\0'));
    Put("broken.pct", Pct(7, 5).substr(0, 550));
    struct Row {
        const char* name;
        const char* subDir;
        int width;
    };
    for (const Row& row :
         { Row { "whole", nullptr, 7 }, Row { "deeper", "sub", 3 }, Row { "deeper", nullptr, 0 },
           Row { "headless", nullptr, 0 }, Row { "short", nullptr, 0 }, Row { "empty", nullptr, 0 },
           Row { "broken", nullptr, 0 }, Row { "missing", nullptr, 0 }, Row { "", nullptr, 0 } })
        EXPECT_EQ(WidthOfPict(row.name, row.subDir), row.width) << row.name;
    EXPECT_EQ(vamLoadPictFromBundle(nullptr, HuxString("whole").GetCFString(), nullptr), nullptr);
}

TEST_F(VamResources, KnowTheSystemsCursors) {
    for (const auto& [name, theme] : { std::pair("arrowCursor", 0),
                                       { "watchCursor", 7 },
                                       { "pointingHandCursorCursor", 10 },
                                       { "pointingHandCursor", -1 },
                                       { "", -1 } }) {
        const HuxString text(name);
        platform::SetThemeCursor(platform::kThemePlusCursor);
        vamSetNamedCursor(text.GetCFString());
        vamSetNamedCursor(text.GetCFString());
        EXPECT_EQ(QGuiApplication::overrideCursor() != nullptr, theme == 7) << "over all: " << name;
        EXPECT_EQ(vamIsSystemNamedCursor(text.GetCFString()), theme >= 0) << name;
        EXPECT_EQ(platform::CurrentThemeCursor(), theme < 0 ? platform::kThemePlusCursor : theme);
    }
    EXPECT_FALSE(vamIsSystemNamedCursor(nullptr));
    platform::SetThemeCursor(platform::kThemeArrowCursor);
}

TEST_F(VamResources, CursorsAreLoadedOnce) {
    EXPECT_FALSE(Register("Reticle"));
    const std::filesystem::path file = Put("Reticle.pct", Pct(32, 9));
    Put("Reticle@2x.pct", Pct(64, 18));
    EXPECT_TRUE(Register("Reticle"));
    std::filesystem::remove(file);
    EXPECT_TRUE(Register("Reticle"));

    vamSetNamedCursor(HuxString("Reticle").GetCFString());
    EXPECT_STREQ(platform::CurrentNamedCursor(), "Reticle");
    vamSetNamedCursor(HuxString("pointingHandCursor").GetCFString());
    EXPECT_STREQ(platform::CurrentNamedCursor(), "Reticle");
    vamSetNamedCursor(HuxString("arrowCursor").GetCFString());
}

TEST_F(VamResources, AResourceKeepsItsTypeAndTheLastIconOfANameIsTheCachedOne) {
    Put("lamp.pct", Pct(6, 6));
    Put("lamp.icns", Png(16, 16));
    const HuxString name("lamp"), missing("missing");
    HuxResource owner(true), looker(true), second(true);
    const platform::PicHandle lent = owner.LoadPICT(name.GetCFString(), Bundle(), nullptr);
    looker.Attach(lent, false);
    looker.Release();
    EXPECT_EQ(looker.GetType(), kHuxResourcePict);
    EXPECT_FALSE(looker.IsValid());
    EXPECT_EQ(platform::GetPictureBounds(lent).right, 6) << "still there";
    EXPECT_EQ(owner.LoadPICT(missing.GetCFString(), Bundle(), nullptr), nullptr);
    EXPECT_EQ(owner.GetType(), kHuxResourceNone);

    ASSERT_NE(owner.LoadIcon(name.GetCFString(), Bundle(), nullptr), nullptr);
    const platform::IconRef newer = second.LoadIcon(name.GetCFString(), Bundle(), nullptr);
    EXPECT_EQ(HuxResource::GetIconRefCache(missing.GetCFString()), nullptr);
    const platform::IconRef cached = HuxResource::GetIconRefCache(name.GetCFString());
    EXPECT_EQ(cached, newer);
    EXPECT_EQ(second.LoadIcon(missing.GetCFString(), Bundle(), nullptr), nullptr);
    HuxResource::UnregisterIconRef();
    EXPECT_EQ(HuxResource::GetIconRefCache(name.GetCFString()), nullptr);
    EXPECT_EQ(platform::ReleaseIconRef(cached), platform::kNoErr); // its own count kept it
}

TEST_F(VamResources, AWindowsItemGivesItsBoundsAndTheAddressOfItsResult) {
    On(MakeCustom("UserPane")).id = platform::ControlID { kHuxPropertyCreator, 91 };
    platform::Rect bounds { 1, 2, 3, 4 };
    EXPECT_EQ(vamGetWindowItemAsRect(window, 92, &bounds), platform::kErrControlNotFound);
    EXPECT_EQ(bounds.right, 4);
    const platform::OSStatus status = vamGetWindowItemAsRect(window, 91, &bounds);
    EXPECT_EQ(status, static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(&bounds)));
    EXPECT_EQ(bounds.right, 90);
    EXPECT_EQ(bounds.bottom, 50);
    test::Dispose(window);
    EXPECT_NE(vamGetWindowItemAsRect(window, 91, &bounds), platform::kNoErr);
}

} // namespace
