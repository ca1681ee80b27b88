// SPDX-License-Identifier: BSD-3-Clause
// JSON that is read to the letter: a key that is unknown, missing or given twice is refused with its
// place. Internal to the host's documents.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace host {

using Json = nlohmann::ordered_json;

// Why a text was refused. Thrown inside a reader and caught by its public functions.
struct Refused {
    std::string reason;
};

// Throws Refused when it is no JSON, or an object in it has a key twice.
Json ParseStrict(std::string_view text);

// An object whose keys are all known. Good as long as the JSON.
class ObjectReader {
public:
    // path: where it stands, such as "settings"; empty for the outermost. optional keys may be
    // missing. Throws Refused.
    ObjectReader(const Json& json, std::string path, std::initializer_list<std::string_view> keys,
                 std::initializer_list<std::string_view> optional = {});

    const Json& At(std::string_view key) const;
    // Null when it is missing.
    const Json* Find(std::string_view key) const;
    std::string PathOf(std::string_view key) const;

    // The value, or Refused with the path.
    const std::string& Text(std::string_view key) const;
    std::int64_t Integer(std::string_view key, std::int64_t least, std::int64_t most) const;
    bool Boolean(std::string_view key) const;
    // Of so many values.
    const Json& Array(std::string_view key, std::size_t size) const;

    [[noreturn]] void Refuse(std::string_view key, const std::string& reason) const;

private:
    const Json& m_json;
    std::string m_path;
};

// For readers of a single value, whose path is known to their caller.
std::int64_t IntegerOf(const Json& value, const std::string& path, std::int64_t least,
                       std::int64_t most);
const std::string& TextOf(const Json& value, const std::string& path);

} // namespace host
