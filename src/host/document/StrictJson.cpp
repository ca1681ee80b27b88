// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/StrictJson.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace host {

namespace {

// The keys of the objects that are open while a text is parsed.
class KeyWatch {
public:
    bool operator()(int /*depth*/, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start)
            m_open.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            m_open.pop_back();
        else if (event == Json::parse_event_t::key)
            Take(parsed.get<std::string>());
        return true;
    }

private:
    struct Open {
        std::set<std::string> keys;
        std::string current;
    };

    void Take(std::string key) {
        auto& open = m_open.back();
        bool const isNew = open.keys.insert(key).second;
        open.current = std::move(key);
        if (!isNew)
            throw Refused { Path() + ": given twice" };
    }

    std::string Path() const {
        std::string path;
        for (auto const& open : m_open)
            path += (path.empty() ? "" : ".") + open.current;
        return path;
    }

    std::vector<Open> m_open;
};

// What the parser says, without its own name and number in front.
std::string ReasonOf(const Json::exception& error) {
    std::string_view const what = error.what();
    auto const start = what.find("] ");
    return "not readable as JSON: " +
           std::string(start == std::string_view::npos ? what : what.substr(start + 2));
}

} // namespace

Json ParseStrict(std::string_view text) {
    try {
        return Json::parse(text, KeyWatch());
    } catch (const Json::exception& error) {
        throw Refused { ReasonOf(error) };
    }
}

ObjectReader::ObjectReader(const Json& json, std::string path,
                           std::initializer_list<std::string_view> keys,
                           std::initializer_list<std::string_view> optional)
    : m_json(json), m_path(std::move(path)) {
    if (!json.is_object())
        throw Refused { (m_path.empty() ? "" : m_path + ": ") + "expected { ... }" };
    auto const isKey = [&](const std::string& key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end() ||
               std::find(optional.begin(), optional.end(), key) != optional.end();
    };
    for (auto const& [key, value] : json.items()) {
        if (!isKey(key))
            Refuse(key, "is unknown");
    }
    for (auto const key : keys) {
        if (!Find(key))
            Refuse(key, "is missing");
    }
}

const Json& ObjectReader::At(std::string_view key) const {
    return m_json.at(std::string(key));
}

const Json* ObjectReader::Find(std::string_view key) const {
    auto const found = m_json.find(std::string(key));
    return found == m_json.end() ? nullptr : &*found;
}

std::string ObjectReader::PathOf(std::string_view key) const {
    return m_path + (m_path.empty() ? "" : ".") + std::string(key);
}

void ObjectReader::Refuse(std::string_view key, const std::string& reason) const {
    throw Refused { PathOf(key) + ": " + reason };
}

const std::string& ObjectReader::Text(std::string_view key) const {
    return TextOf(At(key), PathOf(key));
}

std::int64_t ObjectReader::Integer(std::string_view key, std::int64_t least,
                                   std::int64_t most) const {
    return IntegerOf(At(key), PathOf(key), least, most);
}

bool ObjectReader::Boolean(std::string_view key) const {
    if (!At(key).is_boolean())
        Refuse(key, "expected true or false");
    return At(key).get<bool>();
}

const Json& ObjectReader::Array(std::string_view key, std::size_t size) const {
    if (!At(key).is_array() || At(key).size() != size)
        Refuse(key, "expected a list of " + std::to_string(size));
    return At(key);
}

std::int64_t IntegerOf(const Json& value, const std::string& path, std::int64_t least,
                       std::int64_t most) {
    if (!value.is_number_integer())
        throw Refused { path + ": expected a whole number" };
    // Above what a signed number holds only an unsigned one is exact.
    bool const tooLarge =
        value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
    if (tooLarge || value.get<std::int64_t>() < least || value.get<std::int64_t>() > most)
        throw Refused { path + ": " + value.dump() + " is outside " + std::to_string(least) +
                        " to " + std::to_string(most) };
    return value.get<std::int64_t>();
}

const std::string& TextOf(const Json& value, const std::string& path) {
    if (!value.is_string())
        throw Refused { path + ": expected a text" };
    return value.get_ref<const std::string&>();
}

} // namespace host
