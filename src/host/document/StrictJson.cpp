// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/StrictJson.h"

#include <algorithm>
#include <limits>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace host {

namespace {

// Many times what the largest of our objects has. The reader's objects are lists of keys, which are
// looked through for each new one, and its values are freed and copied by recursion.
constexpr std::size_t kMaxKeys = 64;
constexpr std::size_t kMaxDepth = 16;
constexpr std::size_t kMaxValues = 1'000'000;

// What the parser says, without its own name and number in front.
std::string ReasonOf(const Json::exception& error) {
    const std::string_view what = error.what();
    const auto start = what.find("] ");
    return "not readable as JSON: " +
           std::string(start == std::string_view::npos ? what : what.substr(start + 2));
}

// Looks a text through before anything is built of it, and throws what it is refused for.
class Inspector final : public nlohmann::json_sax<Json> {
public:
    bool null() override { return Count(); }
    bool boolean(bool /*value*/) override { return Count(); }
    bool number_integer(number_integer_t /*value*/) override { return Count(); }
    bool number_unsigned(number_unsigned_t /*value*/) override { return Count(); }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override {
        return Count();
    }
    bool string(string_t& /*value*/) override { return Count(); }
    bool binary(binary_t& /*value*/) override { return Count(); }
    bool start_object(std::size_t /*size*/) override { return Enter(); }
    bool start_array(std::size_t /*size*/) override { return Enter(); }
    bool end_object() override { return Leave(); }
    bool end_array() override { return Leave(); }

    bool key(string_t& name) override {
        auto& open = m_open.back();
        if (open.keys.size() == kMaxKeys)
            Refuse("has more than " + std::to_string(kMaxKeys) + " keys", m_open.size() - 1);
        open.current = name;
        if (!open.keys.insert(std::move(name)).second)
            Refuse("given twice", m_open.size());
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& error) override {
        throw Refused { ReasonOf(error) };
    }

private:
    struct Open {
        std::set<std::string> keys;
        std::string current; // empty in a list
    };

    bool Count() {
        if (++m_values > kMaxValues)
            Refuse("has more than " + std::to_string(kMaxValues) + " values", 0);
        return true;
    }
    bool Enter() {
        if (m_open.size() == kMaxDepth)
            Refuse("is nested more than " + std::to_string(kMaxDepth) + " deep", m_open.size());
        m_open.emplace_back();
        return Count();
    }
    bool Leave() {
        m_open.pop_back();
        return true;
    }

    [[noreturn]] void Refuse(std::string reason, std::size_t depth) const {
        Refused refused { std::move(reason) };
        for (const auto& open : std::span(m_open).first(depth))
            if (!open.current.empty())
                refused.path += (refused.path.empty() ? "" : ".") + open.current;
        throw refused;
    }

    std::vector<Open> m_open;
    std::size_t m_values = 0;
};

} // namespace

Json ParseStrict(std::string_view text) {
    Inspector inspector;
    Json::sax_parse(text, &inspector);
    return Json::parse(text);
}

ObjectReader::ObjectReader(const Json& json, std::initializer_list<std::string_view> keys,
                           std::initializer_list<std::string_view> optional)
    : m_json(json) {
    if (!json.is_object())
        throw Refused { "expected { ... }" };
    const auto isKey = [&](const std::string& key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end() ||
               std::find(optional.begin(), optional.end(), key) != optional.end();
    };
    for (const auto& [key, value] : json.items())
        if (!isKey(key))
            throw Refused { "is unknown", key };
    for (const auto key : keys)
        if (!Find(key))
            throw Refused { "is missing", std::string(key) };
}

const Json* ObjectReader::Find(std::string_view key) const {
    const auto found = m_json.find(std::string(key));
    return found == m_json.end() ? nullptr : &*found;
}

const std::string& TextOf(const Json& value) {
    if (!value.is_string())
        throw Refused { "expected a text" };
    return value.get_ref<const std::string&>();
}

std::int64_t IntegerOf(const Json& value, std::int64_t least, std::int64_t most) {
    if (!value.is_number_integer())
        throw Refused { "expected a whole number" };
    // Above what a signed number holds only an unsigned one is exact.
    const bool tooLarge =
        value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
    if (tooLarge || value.get<std::int64_t>() < least || value.get<std::int64_t>() > most)
        throw Refused { value.dump() + " is outside " + std::to_string(least) + " to " +
                        std::to_string(most) };
    return value.get<std::int64_t>();
}

std::int32_t Int32Of(const Json& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(IntegerOf(value, Limits::min(), Limits::max()));
}

bool BooleanOf(const Json& value) {
    if (!value.is_boolean())
        throw Refused { "expected true or false" };
    return value.get<bool>();
}

const Json& ArrayOf(const Json& value) {
    if (!value.is_array())
        throw Refused { "expected a list" };
    return value;
}

const Json& TupleOf(const Json& value, std::size_t size) {
    if (!value.is_array() || value.size() != size)
        throw Refused { "expected a list of " + std::to_string(size) };
    return value;
}

} // namespace host
