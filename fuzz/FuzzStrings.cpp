// SPDX-License-Identifier: BSD-3-Clause
// Tables of localized strings, and text in each encoding that records come in.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/StringTable.h"
#include "platform/TextEncoding.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    platform::ParseStringTable(text, [](std::size_t line, std::string_view reason) {
        if (line == 0 || reason.empty())
            std::abort();
    });
    for (const char* encoding : { "UTF-8", "CP932", "EUC-JP", "GBK" }) {
        platform::SetApplicationTextEncoding(encoding);
        for (std::string_view rest = text; !rest.empty();) {
            const std::size_t length = platform::CharacterLength(rest);
            if (length == 0 || length > rest.size())
                std::abort();
            rest.remove_prefix(length);
        }
        if (platform::CutToWholeCharacters(text, 7).size() > 7)
            std::abort();
        platform::EncodeText(platform::DecodeText(text));
    }
    return 0;
}
