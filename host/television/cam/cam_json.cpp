#include "television/cam/cam_json.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include <fmt/format.h>

#include "television/base/utf16.h"

namespace television::cam_json {

using nlohmann::json;

[[noreturn]] void fault(const std::string& place, const std::string& reason) {
    throw CamFault((place.empty() ? "/" : place) + ": " + reason);
}

/** Only the place is taken from the parser's errors: their text quotes the description. */
json parse(const std::string& text) {
    try {
        return json::parse(text);
    } catch (const json::parse_error& error) {
        const size_t at = std::min(error.byte == 0 ? 0 : error.byte - 1, text.size());
        const auto line = std::count(text.begin(), text.begin() + static_cast<long>(at), '\n') + 1;
        const size_t start = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
        const size_t column = start == std::string::npos ? at + 1 : at - start;
        fault(fmt::format("line {}, column {}", line, column), "not JSON, or not UTF-8");
    } catch (const json::exception&) {
        fault("", "a number is too large");
    }
}

CamText text(const json& value, const std::string& place, size_t most) {
    if (!value.is_string()) fault(place, "must be a text");
    const auto& utf8 = value.get_ref<const std::string&>();
    if (utf8.find('\0') != std::string::npos) fault(place, "must not hold a zero character");
    CamText units = utf16FromUtf8(utf8);
    if (units.size() > most + 1) {
        fault(place, fmt::format("must have at most {} UTF-16 units", most));
    }
    return units;
}

std::string digits(const json& value, const std::string& place, size_t least, size_t most,
                   bool hexadecimal) {
    const auto isDigit = [=](unsigned char c) {
        return (hexadecimal ? std::isxdigit(c) : std::isdigit(c)) != 0;
    };
    const std::string* all = value.get_ptr<const std::string*>();
    if (all == nullptr || all->size() < least || all->size() > most ||
        !std::all_of(all->begin(), all->end(), isDigit)) {
        const std::string count =
                least == most ? std::to_string(least) : fmt::format("{} to {}", least, most);
        fault(place, fmt::format("must be a text of {} {}digits", count,
                                 hexadecimal ? "hexadecimal " : ""));
    }
    return *all;
}

std::vector<uint8_t> bytesOf(const std::string& hexadecimal) {
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i + 1 < hexadecimal.size(); i += 2) {
        bytes.push_back(static_cast<uint8_t>(std::stoul(hexadecimal.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

Object::Object(const json& value, std::string place, std::initializer_list<const char*> known)
    : mValue(value), mPlace(std::move(place)) {
    if (!value.is_object()) fault(mPlace, "must be an object");
    for (const auto& field : value.items()) {
        const bool expected = std::any_of(known.begin(), known.end(),
                                          [&](const char* name) { return field.key() == name; });
        if (expected) continue;
        const std::vector<std::string> names(known.begin(), known.end());
        fault(mPlace, fmt::format("has a field that is none of {}", fmt::join(names, ", ")));
    }
}

const json* Object::find(const char* name) const {
    const auto found = mValue.find(name);
    return found == mValue.end() || found->is_null() ? nullptr : &*found;
}

const json& Object::need(const char* name) const {
    const json* value = find(name);
    if (value == nullptr) fault(mPlace, fmt::format("needs \"{}\"", name));
    return *value;
}

CamText Object::optionalText(const char* name, size_t most) const {
    const json* value = find(name);
    return value == nullptr ? CamText() : text(*value, place(name), most);
}

uint32_t Object::number(const char* name, uint32_t least, uint32_t most) const {
    const json& value = need(name);
    // A number that is not negative is of the unsigned kind.
    if (!value.is_number_unsigned() || value.get<uint64_t>() < least ||
        value.get<uint64_t>() > most) {
        fault(place(name), fmt::format("must be a whole number from {} to {}", least, most));
    }
    return value.get<uint32_t>();
}

bool Object::flag(const char* name) const {
    const json* value = find(name);
    if (value == nullptr) return false;
    if (!value->is_boolean()) fault(place(name), "must be true or false");
    return value->get<bool>();
}

}  // namespace television::cam_json
