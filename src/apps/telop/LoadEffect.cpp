// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/LoadEffect.h"

#include <filesystem>

#include <unistd.h>

#include "apps/telop/CommandError.h"
#include "apps/telop/WrongFile.h"
#include "host/Message.h"
#include "host/WholeFile.h"
#include "platform/TextEncoding.h"

namespace telop {

std::shared_ptr<host::Plugin> LoadPlugin(const std::optional<std::string>& bundle) {
    std::string why;
    auto plugin =
        bundle ? host::Plugin::Load(*bundle, why) : host::Plugin::LoadByName(kBundleName, why);
    if (!plugin)
        throw CommandError(ExitCode::kBadInput, why);
    return plugin;
}

std::unique_ptr<host::Effect> LoadEffect(const std::optional<std::string>& bundle,
                                         const std::optional<std::string>& settings) {
    std::string why;
    auto effect = host::Effect::Make(LoadPlugin(bundle), why);
    if (!effect)
        throw CommandError(ExitCode::kBadInput, why);
    if (settings && !effect->LoadFile(*settings, why))
        throw CommandError(ExitCode::kBadInput, ExplainFile(*settings, Wanted::kSettings, why));
    return effect;
}

std::string ReadText(const std::string& file, std::size_t maxSize) {
    std::string why;
    const auto bytes = file == "-" ? host::ReadWhole(STDIN_FILENO, "standard input", maxSize, why)
                                   : host::ReadWholeFile(file, maxSize, why);
    if (!bytes)
        throw CommandError(ExitCode::kBadInput, why);
    return { bytes->begin(), bytes->end() };
}

host::Document LoadDocument(const std::string& file) {
    std::string why;
    auto document = host::Document::Load(file, why);
    if (!document)
        throw CommandError(ExitCode::kBadInput, ExplainFile(file, Wanted::kDocument, why));
    return *std::move(document);
}

std::string TrackNames(const host::Document& document) {
    std::string names;
    for (const auto& track : document.tracks)
        names += (names.empty() ? "'" : ", '") + track.name + "'";
    return names;
}

void RefuseExisting(const std::string& file, bool overwrite) {
    std::error_code ignored;
    if (!overwrite && std::filesystem::exists(file, ignored))
        throw CommandError(ExitCode::kCannotWrite,
                           host::Printable(file) + " exists; --overwrite replaces it");
}

void SaveSettings(const host::Effect& effect, const std::string& file, bool overwrite) {
    RefuseExisting(file, overwrite);
    std::string why;
    if (!effect.SaveFile(file, why))
        throw CommandError(ExitCode::kCannotWrite, why);
}

void SetEncoding(const std::optional<std::string>& name) {
    if (name && !platform::SetApplicationTextEncoding(*name))
        FailUsage("--encoding: '" + *name +
                  "' is no known encoding; UTF-8, CP932, EUC-JP, EUC-KR, GBK, Big5 and others that "
                  "iconv lists are");
}

} // namespace telop
