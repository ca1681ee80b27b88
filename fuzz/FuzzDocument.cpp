// SPDX-License-Identifier: BSD-3-Clause
// Documents. One that was understood must come back from its own JSON with every byte.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/document/Document.h"
#include "platform/TextEncoding.h"

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    platform::SetApplicationTextEncoding("UTF-8");
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string why;
    const auto document = host::Document::FromJson(text, "/shots/one", why);
    if (!document) {
        Require(!why.empty());
        return 0;
    }
    const auto json = document->ToJson("/shots/one");
    const auto again = host::Document::FromJson(json, "/shots/one", why);
    Require(again && *again == *document && again->ToJson("/shots/one") == json);
    return 0;
}
