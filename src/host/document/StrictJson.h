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

// Why a text was refused, and the keys that lead to the place. Thrown inside a reader and caught by its
// public functions.
struct Refused {
    std::string reason;
    std::string path = {};

    std::string Text() const { return path.empty() ? reason : path + ": " + reason; }
};

// What read makes of the value of key; what it refuses is refused with the key.
template <class Read>
decltype(auto) Within(std::string_view key, const Read& read) {
    try {
        return read();
    } catch (Refused& refused) {
        refused.path = std::string(key) + (refused.path.empty() ? "" : ".") + refused.path;
        throw;
    }
}

// Throws Refused when it is no JSON, an object in it has a key twice, or it has another shape than
// anything that is kept in JSON here: objects of a few keys, in one another a few times.
Json ParseStrict(std::string_view text);

// An object whose keys are all known. Good as long as the JSON.
class ObjectReader {
public:
    // optional keys may be missing. Throws Refused.
    ObjectReader(const Json& json, std::initializer_list<std::string_view> keys,
                 std::initializer_list<std::string_view> optional = {});

    // Null when it is missing.
    const Json* Find(std::string_view key) const;
    // As Within, of a key that is there.
    template <class Read>
    decltype(auto) Get(std::string_view key, const Read& read) const {
        return Within(key, [&]() -> decltype(auto) { return read(*Find(key)); });
    }

private:
    const Json& m_json;
};

// The value, or Refused.
const std::string& TextOf(const Json& value);
std::int64_t IntegerOf(const Json& value, std::int64_t least, std::int64_t most);
std::int32_t Int32Of(const Json& value);
bool BooleanOf(const Json& value);
const Json& ArrayOf(const Json& value);
// Of so many values.
const Json& TupleOf(const Json& value, std::size_t size);

} // namespace host
