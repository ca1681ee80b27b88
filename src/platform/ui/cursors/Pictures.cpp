// SPDX-License-Identifier: BSD-3-Clause
// Pictures, decoded once, when they are made; and icons: counted, and the registry of them.
#include <limits>
#include <map>
#include <memory>
#include <utility>

#include <QBuffer>
#include <QFile>
#include <QImageReader>

#include "platform/ui/Cursors.h"
#include "platform/ui/cursors/PortImage.h"

namespace platform {

struct Picture {
    QImage image;
};

PicHandle NewPicture(std::span<const std::uint8_t> data) {
    constexpr int kMaxSide = std::numeric_limits<std::int16_t>::max();
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                               static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.canRead() ? reader.size() : QSize();
    if (!size.isValid() || size.width() > kMaxSide || size.height() > kMaxSide)
        return nullptr;
    auto picture = std::make_unique<Picture>(Picture { reader.read() });
    return picture->image.isNull() ? nullptr : picture.release();
}

void KillPicture(PicHandle picture) {
    delete picture;
}

Rect GetPictureBounds(PicHandle picture) {
    if (!picture)
        return {};
    return { 0, 0, static_cast<std::int16_t>(picture->image.height()),
             static_cast<std::int16_t>(picture->image.width()) };
}

OSStatus DrawPicture(PicHandle picture, const Rect& destination) {
    return picture ? DrawImageInPort(picture->image, destination) : kParamErr;
}

// Icons ------------------------------------------------------------------------------------------

// Nothing draws icons, so that no picture is kept.
struct Icon {
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

bool IsPicture(const std::filesystem::path& file) {
    QFile device(QFile::decodeName(file.c_str()));
    QImageReader reader(&device); // the device and not its name, whose ending may lie
    reader.setDecideFormatFromContent(true);
    return !reader.read().isNull();
}

} // namespace

OSStatus RegisterIconRefFromFile(OSType creator, OSType type, const std::filesystem::path& file,
                                 IconRef* icon) {
    *icon = nullptr;
    if (!IsPicture(file))
        return kParamErr;
    IconHolder made(new Icon);
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

} // namespace platform
