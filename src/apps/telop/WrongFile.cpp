// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/WrongFile.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "host/Effect.h"
#include "host/Message.h"

namespace telop {

namespace {

enum class Kind { kOther, kPicture, kArchive, kDocument, kJson };

Kind KindOf(const std::string& file) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored))
        return Kind::kOther;
    std::array<char, 4096> buffer {};
    std::ifstream stream(file, std::ios::binary);
    stream.read(buffer.data(), buffer.size());
    const std::string_view start(buffer.data(), static_cast<std::size_t>(stream.gcount()));
    const auto text = start.find_first_not_of(" \t\r\n");
    if (start.starts_with("\x89PNG"))
        return Kind::kPicture;
    if (start.size() == host::Effect::kArchiveSize)
        return Kind::kArchive;
    if (text == std::string_view::npos || (start[text] != '{' && start[text] != '['))
        return Kind::kOther;
    return start.find("\"telop-document\"") != std::string_view::npos ? Kind::kDocument
                                                                      : Kind::kJson;
}

// Empty where the kind says nothing that the reason does not say.
std::string Explanation(Kind kind, Wanted wanted, const std::string& name) {
    if (kind == Kind::kPicture)
        return wanted == Wanted::kDocument
                   ? "is a picture, not a document; pictures are named as INPUT"
                   : "is a picture, not settings";
    if (kind == Kind::kDocument && wanted != Wanted::kDocument)
        return "is a document of telop-studio, not settings; 'telop render --document " + name +
               "' draws it";
    if (kind == Kind::kArchive && wanted == Wanted::kDocument)
        return "is a settings archive, not a document; give it with --settings";
    if (kind == Kind::kArchive && wanted == Wanted::kJson)
        return "is a settings archive, not JSON; name it as ARCHIVE, without --from";
    if (kind == Kind::kJson && wanted == Wanted::kSettings)
        return "is JSON, not a settings archive; 'telop settings --from " + name +
               " -o ARCHIVE' makes one of it";
    return {};
}

} // namespace

std::string ExplainFile(const std::string& file, Wanted wanted, const std::string& reason) {
    const auto name = host::Printable(file);
    const auto explanation = Explanation(KindOf(file), wanted, name);
    return explanation.empty() ? reason : name + ": " + explanation;
}

} // namespace telop
