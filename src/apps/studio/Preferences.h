// SPDX-License-Identifier: BSD-3-Clause
// What the program keeps from one run to the next.
#pragma once

#include <utility>

#include <QSettings>
#include <QString>
#include <QStringList>

namespace studio {

// Under the user's configuration folder.
inline QSettings Preferences() {
    return QSettings(QStringLiteral("telop"), QStringLiteral("studio"));
}

// What was opened last.
class Recent {
public:
    // key: the list's name in the settings.
    explicit Recent(QString key) : m_key(std::move(key)) {}

    QStringList List() const { return Preferences().value(m_key).toStringList(); }
    // To the top. An absolute path or pattern.
    void Add(const QString& path) {
        auto list = List();
        list.removeAll(path);
        list.prepend(path);
        Preferences().setValue(m_key, QStringList(list.mid(0, kMost)));
    }
    void Clear() { Preferences().remove(m_key); }

private:
    static constexpr qsizetype kMost = 10;

    QString m_key;
};

} // namespace studio
