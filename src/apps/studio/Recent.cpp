// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Recent.h"

namespace studio {

QSettings Preferences() {
    return QSettings(QStringLiteral("telop"), QStringLiteral("studio"));
}

QStringList Recent::List() const {
    return Preferences().value(m_key).toStringList();
}

void Recent::Add(const QString& path) {
    auto list = List();
    list.removeAll(path);
    list.prepend(path);
    Preferences().setValue(m_key, QStringList(list.mid(0, kMost)));
}

void Recent::Remove(const QString& path) {
    auto list = List();
    list.removeAll(path);
    Preferences().setValue(m_key, list);
}

void Recent::Clear() {
    Preferences().remove(m_key);
}

} // namespace studio
