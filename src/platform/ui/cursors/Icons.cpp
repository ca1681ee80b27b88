// SPDX-License-Identifier: BSD-3-Clause
// Icons: counted sets of one drawing in several sizes, and the registry of them.
#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <QFile>
#include <QImageReader>

#include "platform/ui/Cursors.h"
#include "platform/ui/cursors/PortImage.h"

namespace platform {

struct Icon {
    std::vector<QImage> images; // not empty, narrowest first
    long count = 1;
};

namespace {

struct ReleaseIcon {
    void operator()(IconRef icon) const { ReleaseIconRef(icon); }
};
using IconHolder = std::unique_ptr<Icon, ReleaseIcon>;
using IconRegistry = std::map<std::pair<OSType, OSType>, IconHolder>;

// Never destroyed: modules give icons back while the process ends.
IconRegistry& TheIcons() {
    static auto* registry = new IconRegistry;
    return *registry;
}

std::vector<QImage> ReadImages(const std::filesystem::path& file) {
    constexpr int kMaxImages = 64; // an animation is no icon of many sizes
    QFile device(QFile::decodeName(file.c_str()));
    QImageReader reader(&device); // the device and not its name, whose ending may lie
    reader.setDecideFormatFromContent(true);
    std::vector<QImage> images;
    for (int i = 0; i < kMaxImages; ++i) {
        QImage image = reader.read();
        if (image.isNull())
            break;
        image.setDevicePixelRatio(1);
        images.push_back(std::move(image));
        if (!reader.jumpToNextImage())
            break;
    }
    std::ranges::stable_sort(images, {}, &QImage::width);
    return images;
}

} // namespace

OSStatus RegisterIconRefFromFile(OSType creator, OSType type, const std::filesystem::path& file,
                                 IconRef* icon) {
    *icon = nullptr;
    std::vector<QImage> images = ReadImages(file);
    if (images.empty())
        return kParamErr;
    IconHolder made(new Icon { std::move(images) });
    *icon = made.get();
    AcquireIconRef(*icon);
    TheIcons()[{ creator, type }] = std::move(made);
    return kNoErr;
}

OSStatus AcquireIconRef(IconRef icon) {
    if (!icon)
        return kParamErr;
    ++icon->count;
    return kNoErr;
}

OSStatus ReleaseIconRef(IconRef icon) {
    if (!icon)
        return kParamErr;
    if (--icon->count == 0)
        delete icon;
    return kNoErr;
}

OSStatus UnregisterIconRef(OSType creator, OSType type) {
    return TheIcons().erase({ creator, type }) ? kNoErr : kParamErr;
}

OSStatus PlotIconRef(const Rect& bounds, IconRef icon) {
    if (!icon)
        return kParamErr;
    const int width = bounds.right - bounds.left;
    // Reducing looks better than enlarging.
    const auto fit = std::ranges::lower_bound(icon->images, width, {}, &QImage::width);
    return DrawImageInPort(fit == icon->images.end() ? icon->images.back() : *fit, bounds);
}

} // namespace platform
