// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/ShotStrings.h"

#include <utility>

#include "apps/studio/Texts.h"
#include "platform/TextEncoding.h"

namespace studio {

namespace {

QString TroubleWith(const platform::EncodedText& encoded, FieldRoom field) {
    if (!encoded.complete)
        return T("The text encoding %1 lacks a character of this text.")
            .arg(QString::fromStdString(platform::ApplicationTextEncoding()));
    if (encoded.bytes.size() > field.room)
        return T("Too long: %1 bytes, and %2 fit.").arg(encoded.bytes.size()).arg(field.room);
    if (encoded.bytes.find_first_of(std::string("\0\r\n", field.lines ? 1 : 3)) !=
        std::string::npos)
        return T("The text must be one line.");
    return {};
}

} // namespace

StringHere Resolve(const std::string& text, const host::TokenValues& values, FieldRoom field) {
    std::string why;
    const auto parsed =
        host::TokenText::Parse(text, why, values.run ? values.run->defines : host::Defines());
    if (!parsed)
        return { .trouble = T("Unknown token. Use {frame}, {frame+1}, {frame:04}, {first}, {last}, "
                              "{count}, {tc}, {seconds}, {file}, {name}, {date} or {time}; {{ "
                              "stands for a brace.") };
    StringHere here { .hasTokens = parsed->HasTokens(), .text = parsed->Resolve(values) };
    auto encoded = platform::EncodeText(here.text);
    here.trouble = TroubleWith(encoded, field);
    if (here.trouble.isEmpty())
        here.bytes = std::move(encoded.bytes);
    return here;
}

std::array<std::string, 4> Resolve(const ShotStrings& strings, const host::TokenValues& values) {
    std::array<std::string, 4> resolved;
    for (std::size_t i = 0; strings.present && i < resolved.size(); ++i)
        resolved[i] = Resolve(strings.texts[i], values).bytes;
    return resolved;
}

} // namespace studio
