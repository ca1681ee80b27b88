// SPDX-License-Identifier: BSD-3-Clause
// Which of Qt's platforms can be opened here: its plug-in is installed, and the display answers.
#include "platform/ui/windows/Input.h"

#include <algorithm>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

namespace platform {

namespace {

QStringList PlatformFolders() {
    QStringList folders;
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM_PLUGIN_PATH"))
        folders.append(qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH"));
    for (const QString& path : QCoreApplication::libraryPaths())
        folders.append(path + QStringLiteral("/platforms"));
    return folders;
}

bool HasKey(const QString& file, const QString& key) {
    const QJsonObject plugin = QPluginLoader(file).metaData();
    const QJsonArray keys =
        plugin.value(QLatin1String("MetaData")).toObject().value(QLatin1String("Keys")).toArray();
    return keys.contains(key);
}

bool IsInstalled(const QString& platform) {
    for (const QString& folder : PlatformFolders()) {
        for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files))
            if (QLibrary::isLibrary(file.fileName()) && HasKey(file.filePath(), platform))
                return true;
    }
    return false;
}

// Asks the display itself, through the library that Qt's plug-in uses as well: a display that is
// named may be gone, or refuse this user.
bool AnswersX11() {
    using Connect = void* (*)(const char* display, int* screen);
    using HasError = int (*)(void* connection);
    using Disconnect = void (*)(void* connection);
    QLibrary xcb(QStringLiteral("xcb"), 1);
    const auto connect = reinterpret_cast<Connect>(xcb.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(xcb.resolve("xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(xcb.resolve("xcb_disconnect"));
    if (!connect || !hasError || !disconnect)
        return false;
    void* const connection = connect(nullptr, nullptr);
    const bool answers = connection && hasError(connection) == 0;
    if (connection)
        disconnect(connection);
    return answers;
}

bool AnswersWayland() {
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY");
    const QDir folder(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    return !name.isEmpty() && QFileInfo::exists(folder.absoluteFilePath(name));
}

// One entry of QT_QPA_PLATFORM: a name, and options behind a colon.
bool CanOpen(const QString& entry) {
    const QString name = entry.section(QLatin1Char(':'), 0, 0);
    if (!IsInstalled(name))
        return false;
    if (name == QLatin1String("xcb"))
        return AnswersX11();
    if (name.startsWith(QLatin1String("wayland")))
        return AnswersWayland();
    return true;
}

QStringList Candidates() {
    const QString wanted = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (!wanted.isEmpty())
        return wanted.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QStringList candidates;
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        candidates.append(QStringLiteral("xcb"));
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        candidates.append(QStringLiteral("wayland"));
    // The session's own kind goes first.
    if (qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland"))
        std::reverse(candidates.begin(), candidates.end());
    return candidates;
}

} // namespace

std::string FindDisplayPlatform() {
    for (const QString& candidate : Candidates())
        if (CanOpen(candidate))
            return candidate.toStdString();
    return {};
}

} // namespace platform
