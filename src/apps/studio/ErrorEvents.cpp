// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/ErrorEvents.h"

#include <utility>

#include "apps/studio/Texts.h"

namespace studio {

namespace {

struct KnownEvent {
    const char* eventClass;
    std::uint32_t kind; // 0: any
    const char* words;
};
// The first that fits.
constexpr KnownEvent kKnown[] {
    { "'cmds'", 1, N("a command") },
    { "'keyb'", 0, N("a key") },
    { "'mous'", 10, N("the mouse wheel") },
    { "'mous'", 0, N("the mouse") },
    { "'wind'", 72, N("closing a window") },
    { "'wind'", 73, N("the end of a window") },
    { "'wind'", 0, N("a change of a window") },
    { "'cntl'", 4, N("drawing a control") },
    { "'cntl'", 0, N("a control") },
    { "'menu'", 0, N("a menu") },
    { "'text'", 0, N("typed text") },
    { "'HUXW'", 0, N("a change of a window") },
    { "'HUXB'", 0, N("a list") },
};

// Four characters where they can be read, hexadecimal where not.
QString ClassName(std::uint32_t eventClass) {
    QString name;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto byte = static_cast<char16_t>(eventClass >> shift & 0xFF);
        if (byte < 0x20 || byte > 0x7E)
            return QStringLiteral("0x%1").arg(eventClass, 8, 16, QLatin1Char('0'));
        name += QChar(byte);
    }
    return QLatin1Char('\'') + name + QLatin1Char('\'');
}

QString WordsOf(const PluginError& error) {
    for (const auto& known : kKnown)
        if (ClassName(error.eventClass) == QLatin1String(known.eventClass) &&
            (known.kind == 0 || known.kind == error.eventKind))
            return T(known.words);
    return T("an event");
}

} // namespace

QString Describe(const PluginError& error) {
    if (error.eventClass == 0)
        return T("The effect's dialog ran into an error (code %1).").arg(error.code);
    return T("The effect's dialog ran into an error while it handled %1 (%2, kind %3; code %4).")
        .arg(WordsOf(error), ClassName(error.eventClass))
        .arg(error.eventKind)
        .arg(error.code);
}

ErrorEvents::ErrorEvents(std::function<void(const PluginError&)> hear) : m_hear(std::move(hear)) {
    const platform::EventTypeSpec type { kPluginErrorClass, kPluginErrorKind };
    platform::InstallEventHandler(platform::GetApplicationEventTarget(), Handle, 1, &type, this,
                                  &m_handler);
}

ErrorEvents::~ErrorEvents() {
    platform::RemoveEventHandler(m_handler);
}

platform::OSStatus ErrorEvents::Handle(platform::EventHandlerCallRef, platform::EventRef event,
                                       void* self) {
    PluginError error {};
    std::uint32_t size = 0;
    const auto status = platform::GetEventParameter(
        event, kPluginErrorClass, platform::kTypeWildCard, nullptr, sizeof error, &size, &error);
    if (status || size != sizeof error)
        return platform::kEventNotHandledErr;
    static_cast<ErrorEvents*>(self)->m_hear(error);
    return 0;
}

} // namespace studio
