// SPDX-License-Identifier: BSD-3-Clause
// Scoped savers of the platform's drawing state: each restores in its destructor what its
// constructor found. Nest them so that what owns a world ends after what makes another one current.
#pragma once

#include "platform/Drawing.h"

// The current port.
class XSaveGrafPort {
public:
    XSaveGrafPort() : m_port(platform::GetPort()) {}
    XSaveGrafPort(const XSaveGrafPort&) = delete;
    XSaveGrafPort& operator=(const XSaveGrafPort&) = delete;
    virtual ~XSaveGrafPort() { platform::SetPort(m_port); }

private:
    platform::CGrafPtr m_port;
};

// The current port's font, size, face and transfer mode. They go back to that port, whichever port
// is current by then, and that one stays current.
class XSaveText {
public:
    XSaveText()
        : m_port(platform::GetPort()), m_font(platform::GetPortTextFont(m_port)),
          m_size(platform::GetPortTextSize(m_port)), m_mode(platform::GetPortTextMode(m_port)),
          m_face(platform::GetPortTextFace(m_port)) {}
    XSaveText(const XSaveText&) = delete;
    XSaveText& operator=(const XSaveText&) = delete;
    virtual ~XSaveText() {
        const XSaveGrafPort current;
        platform::SetPort(m_port);
        platform::TextFont(m_font);
        platform::TextSize(m_size);
        platform::TextMode(m_mode);
        platform::TextFace(m_face);
    }

private:
    platform::CGrafPtr m_port;
    std::int16_t m_font;
    std::int16_t m_size;
    std::int16_t m_mode;
    std::int16_t m_face;
};

// The current world and device.
class XSaveGWorld {
public:
    XSaveGWorld() { platform::GetGWorld(&m_port, &m_device); }
    XSaveGWorld(const XSaveGWorld&) = delete;
    XSaveGWorld& operator=(const XSaveGWorld&) = delete;
    virtual ~XSaveGWorld() { platform::SetGWorld(m_port, m_device); }

private:
    platform::CGrafPtr m_port = nullptr;
    platform::GDHandle m_device = nullptr;
};

// Owns a world; null is none.
class XReleaseGWorld {
public:
    explicit XReleaseGWorld(platform::GWorldPtr world) : m_world(world) {}
    XReleaseGWorld(const XReleaseGWorld&) = delete;
    XReleaseGWorld& operator=(const XReleaseGWorld&) = delete;
    virtual ~XReleaseGWorld() {
        if (m_world)
            platform::DisposeGWorld(m_world);
    }

private:
    platform::GWorldPtr m_world;
};

// Locks a pixel map.
class XPixMapLocker {
public:
    explicit XPixMapLocker(platform::PixMapHandle pixels)
        : m_pixels(pixels), m_locked(platform::LockPixels(pixels)) {}
    XPixMapLocker(const XPixMapLocker&) = delete;
    XPixMapLocker& operator=(const XPixMapLocker&) = delete;
    virtual ~XPixMapLocker() {
        if (m_locked)
            platform::UnlockPixels(m_pixels);
    }

    bool IsLocked() const { return m_locked; }

private:
    platform::PixMapHandle m_pixels;
    bool m_locked;
};

// The current port's foreground and background colours.
class XSaveColor {
public:
    XSaveColor() {
        platform::GetForeColor(&m_fore);
        platform::GetBackColor(&m_back);
    }
    XSaveColor(const XSaveColor&) = delete;
    XSaveColor& operator=(const XSaveColor&) = delete;
    virtual ~XSaveColor() {
        platform::RGBForeColor(m_fore);
        platform::RGBBackColor(m_back);
    }

private:
    platform::RGBColor m_fore {};
    platform::RGBColor m_back {};
};
