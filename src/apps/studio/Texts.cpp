// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Texts.h"

#include <algorithm>

#include <QFile>

#include "platform/Languages.h"
#include "platform/StringTable.h"

namespace studio {

namespace {

std::string s_language = "en";
platform::StringTable s_texts; // empty for English

QString TableOf(std::string_view language) {
    return QStringLiteral(":/studio/%1.lproj/Localizable.strings")
        .arg(QString::fromUtf8(language.data(), static_cast<qsizetype>(language.size())));
}

} // namespace

bool HasLanguage(std::string_view name) {
    const auto language = name.substr(0, name.find_first_of("_."));
    return language == "en" || QFile::exists(TableOf(language));
}

void ChooseLanguage() {
    const auto names = platform::UserLanguages(); // English is among them
    s_language = *std::ranges::find_if(names, [](const std::string& name) {
        return name == "en" || QFile::exists(TableOf(name));
    });
    s_texts.clear();
    QFile file(TableOf(s_language));
    if (file.open(QIODevice::ReadOnly))
        s_texts = platform::ParseStringTable(file.readAll().toStdString(), {});
}

const std::string& TheLanguage() {
    return s_language;
}

QString T(const char* english) {
    const auto found = s_texts.find(std::string_view(english));
    return found == s_texts.end() ? QString::fromUtf8(english)
                                  : QString::fromStdString(found->second);
}

QString FramesText(qint64 count) {
    return count == 1 ? T("1 frame") : T("%1 frames").arg(count);
}

} // namespace studio
