// SPDX-License-Identifier: BSD-3-Clause
// What was opened last, kept from one run of the program to the next.
#pragma once

#include <utility>

#include <QSettings>
#include <QString>
#include <QStringList>

namespace studio {

// The program's settings, under the user's configuration folder.
QSettings Preferences();

class Recent {
public:
    static constexpr qsizetype kMost = 10;

    // key: the list's name in the settings.
    explicit Recent(QString key) : m_key(std::move(key)) {}

    QStringList List() const;
    // To the top. An absolute path or pattern.
    void Add(const QString& path);
    void Remove(const QString& path);
    void Clear();

private:
    QString m_key;
};

} // namespace studio
