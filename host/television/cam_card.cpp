#include "cam_card.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "middleware/ci.h"

namespace television {
namespace {

using nlohmann::json;

constexpr size_t kMostUnits = 255;
constexpr size_t kMostProfileUnits = 99;  // with the zero unit what a client has room for
constexpr int kMostScreensDeep = 16;
constexpr size_t kMostHostIdBytes = 32;
constexpr double kMostSeconds = 600;
constexpr char kPinPrompt[] = "PIN";

[[noreturn]] void fault(const std::string& place, const std::string& reason) {
    throw CamFault((place.empty() ? "/" : place) + ": " + reason);
}

/** The parser's own words quote the text, which may be a PIN; only the place is taken from them. */
json parsed(const std::string& text) {
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

CamText text(const json& value, const std::string& place, size_t most = kMostUnits) {
    if (!value.is_string()) fault(place, "must be a text");
    const auto& utf8 = value.get_ref<const std::string&>();
    if (utf8.find('\0') != std::string::npos) fault(place, "must not hold a zero character");
    CamText units = camText(utf8);
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

/** An object of the description, which has no fields but the known ones. A null field is missing.
 */
class Object {
  public:
    Object(const json& value, std::string place, std::initializer_list<const char*> known)
        : mValue(value), mPlace(std::move(place)) {
        if (!value.is_object()) fault(mPlace, "must be an object");
        for (const auto& field : value.items()) {
            const bool expected = std::any_of(known.begin(), known.end(), [&](const char* name) {
                return field.key() == name;
            });
            if (expected) continue;
            const std::vector<std::string> names(known.begin(), known.end());
            fault(mPlace, fmt::format("has a field that is none of {}", fmt::join(names, ", ")));
        }
    }

    /** Null when it is missing. */
    const json* find(const char* name) const {
        const auto found = mValue.find(name);
        return found == mValue.end() || found->is_null() ? nullptr : &*found;
    }
    const json& need(const char* name) const {
        const json* value = find(name);
        if (value == nullptr) fault(mPlace, fmt::format("needs \"{}\"", name));
        return *value;
    }
    std::string place(const char* name) const { return mPlace + "/" + name; }

    CamText optionalText(const char* name, size_t most = kMostUnits) const {
        const json* value = find(name);
        return value == nullptr ? CamText() : text(*value, place(name), most);
    }
    uint32_t number(const char* name, uint32_t least, uint32_t most) const {
        const json& value = need(name);
        // A number that is not negative is of the unsigned kind.
        if (!value.is_number_unsigned() || value.get<uint64_t>() < least ||
            value.get<uint64_t>() > most) {
            fault(place(name), fmt::format("must be a whole number from {} to {}", least, most));
        }
        return value.get<uint32_t>();
    }
    bool flag(const char* name) const {
        const json* value = find(name);
        if (value == nullptr) return false;
        if (!value->is_boolean()) fault(place(name), "must be true or false");
        return value->get<bool>();
    }

  private:
    const json& mValue;
    const std::string mPlace;
};

/** Reads screens and what they lead to. */
class ScreenReader {
  public:
    explicit ScreenReader(const std::string& pin) : mPin(pin) {}

    using Screen = std::shared_ptr<const CamScreen>;

    /** Where a screen is expected: a menu with its items, or another kind under its name. */
    Screen screen(const json& value, const std::string& place, int depth) const {
        for (const char* kind : kKinds) {
            if (!value.is_object() || !value.contains(kind)) continue;
            const Object object(value, place, {kind});
            return named(kind, object.need(kind), object.place(kind), {}, depth);
        }
        return lines(CamScreen::kMenu, value, place, depth);
    }

  private:
    static constexpr const char* kKinds[] = {"menu", "list", "enquiry", "pin", "info"};

    Screen named(const std::string& kind, const json& value, const std::string& place,
                 const CamText& label, int depth) const {
        if (kind == "menu") return lines(CamScreen::kMenu, value, place, depth);
        if (kind == "list") return lines(CamScreen::kList, value, place, depth);
        if (kind == "enquiry") return enquiry(value, place, depth);
        if (kind == "pin") return pin(value, place, depth);
        return information(value, place, label, depth);
    }

    static std::shared_ptr<CamScreen> make(CamScreen::Kind kind, const std::string& place,
                                           int depth) {
        if (depth > kMostScreensDeep) {
            fault(place, fmt::format("is more than {} screens deep", kMostScreensDeep));
        }
        auto screen = std::make_shared<CamScreen>();
        screen->kind = kind;
        return screen;
    }

    /** A menu or list: an object, or its items alone. */
    Screen lines(CamScreen::Kind kind, const json& value, const std::string& place,
                 int depth) const {
        const auto screen = make(kind, place, depth);
        if (value.is_array()) {
            addItems(*screen, value, place, depth);
            return screen;
        }
        const Object object(value, place, {"title", "subtitle", "bottom", "items"});
        addTitles(*screen, object);
        addItems(*screen, object.need("items"), object.place("items"), depth);
        return screen;
    }

    static void addTitles(CamScreen& screen, const Object& object) {
        screen.title = object.optionalText("title");
        screen.subtitle = object.optionalText("subtitle");
        screen.bottom = object.optionalText("bottom");
    }

    static void checkCount(const json& items, const std::string& place) {
        if (!items.is_array()) fault(place, "must be an array");
        if (items.size() > CI_MMI_MENU_MAX_ITEMS) {
            fault(place, fmt::format("must have at most {} items", int{CI_MMI_MENU_MAX_ITEMS}));
        }
    }

    void addItems(CamScreen& screen, const json& value, const std::string& place, int depth) const {
        checkCount(value, place);
        for (size_t i = 0; i < value.size(); ++i) {
            screen.items.push_back(
                    item(value[i], fmt::format("{}/{}", place, i), screen.kind, depth));
        }
    }

    CamItem item(const json& value, const std::string& place, CamScreen::Kind kind,
                 int depth) const {
        CamItem item;
        if (value.is_string()) {
            item.text = text(value, place);
            return item;
        }
        const Object object(value, place,
                            {"text", "title", "subtitle", "bottom", "items", "menu", "list",
                             "enquiry", "pin", "info", "upgrade"});
        item.text = object.optionalText(object.find("text") == nullptr ? "title" : "text");
        int actions = 0;
        const auto does = [&](const char* name) {
            if (object.find(name) == nullptr) return false;
            if (kind == CamScreen::kList) fault(object.place(name), "a list only informs");
            if (++actions > 1) fault(place, "must do one thing only");
            return true;
        };
        for (const char* name : kKinds) {
            if (!does(name)) continue;
            item.opens = named(name, object.need(name), object.place(name), item.text, depth + 1);
        }
        if (does("items")) item.opens = subMenu(object, place, depth + 1);
        if (does("upgrade")) {
            item.upgrades = object.flag("upgrade");
            if (!item.upgrades) fault(object.place("upgrade"), "must be true");
        }
        return item;
    }

    /** The menu that an item holds itself. */
    Screen subMenu(const Object& object, const std::string& place, int depth) const {
        const auto screen = make(CamScreen::kMenu, place, depth);
        addTitles(*screen, object);
        addItems(*screen, object.need("items"), object.place("items"), depth);
        return screen;
    }

    /** A list of one text or some. */
    static Screen information(const json& value, const std::string& place, const CamText& title,
                              int depth) {
        const auto screen = make(CamScreen::kList, place, depth);
        screen->title = title;
        if (value.is_string()) {
            screen->items.push_back({text(value, place), nullptr, false});
            return screen;
        }
        checkCount(value, place);
        for (size_t i = 0; i < value.size(); ++i) {
            screen->items.push_back(
                    {text(value[i], fmt::format("{}/{}", place, i)), nullptr, false});
        }
        return screen;
    }

    Screen enquiry(const json& value, const std::string& place, int depth) const {
        const Object object(value, place, {"prompt", "length", "blind", "accept", "then"});
        const auto screen = make(CamScreen::kEnquiry, place, depth);
        screen->prompt = object.optionalText("prompt");
        screen->length = static_cast<uint8_t>(object.number("length", 1, UINT8_MAX));
        screen->blind = object.flag("blind");
        screen->accept = object.optionalText("accept", screen->length);
        addThen(*screen, object, depth);
        return screen;
    }

    Screen pin(const json& value, const std::string& place, int depth) const {
        if (mPin.empty()) fault(place, "needs the \"pin\" of the module");
        const auto screen = make(CamScreen::kPin, place, depth);
        screen->prompt = camText(kPinPrompt);
        screen->length = CamCard::kPinDigits;
        screen->blind = true;
        screen->accept = camText(mPin);
        if (value.is_boolean() && value.get<bool>()) return screen;
        if (value.is_string()) {
            screen->prompt = text(value, place);
            return screen;
        }
        const Object object(value, place, {"prompt", "then"});
        if (object.find("prompt") != nullptr) screen->prompt = object.optionalText("prompt");
        addThen(*screen, object, depth);
        return screen;
    }

    void addThen(CamScreen& enquiry, const Object& object, int depth) const {
        const json* then = object.find("then");
        if (then != nullptr) enquiry.then = screen(*then, object.place("then"), depth + 1);
    }

    const std::string& mPin;
};

void readFirmware(const json& value, const std::string& place, CamCard& card) {
    const Object firmware(value, place, {"version", "seconds"});
    if (firmware.find("version") != nullptr) {
        card.firmwareVersion = firmware.number("version", 0, UINT32_MAX);
    }
    if (const json* seconds = firmware.find("seconds")) {
        if (!seconds->is_number() || !(seconds->get<double>() >= 0) ||
            seconds->get<double>() > kMostSeconds) {
            fault(firmware.place("seconds"),
                  fmt::format("must be a number from 0 to {}", kMostSeconds));
        }
        card.firmwareTime =
                std::chrono::milliseconds(static_cast<int64_t>(seconds->get<double>() * 1000));
    }
}

std::string language(const json& value, const std::string& place) {
    const std::string* all = value.get_ptr<const std::string*>();
    if (all == nullptr || all->size() != 3 ||
        !std::all_of(all->begin(), all->end(),
                     [](unsigned char c) { return c < 0x80 && std::isalpha(c) != 0; })) {
        fault(place, "must be a text of three letters");
    }
    return *all;
}

}  // namespace

std::shared_ptr<const CamCard> parseCamCard(const std::string& description) {
    const json root = parsed(description);
    const Object object(root, "",
                        {"name", "id", "language", "profile", "hostId", "pin", "pinRetries", "menu",
                         "firmware"});
    auto card = std::make_shared<CamCard>();
    card->name = text(object.need("name"), object.place("name"));
    if (const json* id = object.find("id")) {
        const size_t count = 2 * card->id.size();
        const auto bytes = bytesOf(digits(*id, object.place("id"), count, count, true));
        std::copy(bytes.begin(), bytes.end(), card->id.begin());
    }
    if (const json* code = object.find("language")) {
        card->language = language(*code, object.place("language"));
    }
    if (object.find("profile") != nullptr) {
        card->profile = object.optionalText("profile", kMostProfileUnits);
    }
    if (const json* hostId = object.find("hostId")) {
        const std::string hexadecimal =
                digits(*hostId, object.place("hostId"), 2, 2 * kMostHostIdBytes, true);
        if (hexadecimal.size() % 2 != 0) fault(object.place("hostId"), "must be whole bytes");
        card->hostId = bytesOf(hexadecimal);
    }
    if (const json* pin = object.find("pin")) {
        card->pin =
                digits(*pin, object.place("pin"), CamCard::kPinDigits, CamCard::kPinDigits, false);
    }
    if (object.find("pinRetries") != nullptr) {
        card->pinRetries = static_cast<uint8_t>(object.number("pinRetries", 1, UINT8_MAX));
    }
    if (const json* firmware = object.find("firmware")) {
        readFirmware(*firmware, object.place("firmware"), *card);
    }
    if (const json* menu = object.find("menu")) {
        card->menu = ScreenReader(card->pin).screen(*menu, object.place("menu"), 1);
    }
    return card;
}

}  // namespace television
