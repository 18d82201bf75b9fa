#include "television/cam/cam_screen_reader.h"

#include <utility>

#include <fmt/format.h>

#include "middleware/ci.h"
#include "television/base/utf16.h"
#include "television/cam/cam_json.h"

namespace television {
namespace {

using nlohmann::json;

constexpr int kMostScreensDeep = 16;
constexpr char kPinPrompt[] = "PIN";

/** Reads screens with the items and screens in them. Throws CamFault. */
class ScreenReader {
  public:
    /** `pin`: the module's, empty when it has none. */
    explicit ScreenReader(const std::string& pin) : mPin(pin) {}

    using Screen = std::shared_ptr<const CamScreen>;

    /** Reads a value that is a screen: a menu or its items, or an object with one field that names
     * the kind of screen. `depth` counts the screens on the way here, this one included. */
    Screen screen(const json& value, const std::string& place, int depth) const {
        for (const char* kind : kKinds) {
            if (!value.is_object() || !value.contains(kind)) continue;
            const cam_json::Object object(value, place, {kind});
            return ofKind(kind, object.need(kind), object.place(kind), {}, depth);
        }
        return menuOrList(CamScreen::kMenu, value, place, depth);
    }

  private:
    static constexpr const char* kKinds[] = {"menu", "list", "enquiry", "pin", "info"};

    /** `label`: the text of the item that opens the screen. */
    Screen ofKind(const std::string& kind, const json& value, const std::string& place,
                  const CamText& label, int depth) const {
        if (kind == "menu") return menuOrList(CamScreen::kMenu, value, place, depth);
        if (kind == "list") return menuOrList(CamScreen::kList, value, place, depth);
        if (kind == "enquiry") return enquiry(value, place, depth);
        if (kind == "pin") return pin(value, place, depth);
        return information(value, place, label, depth);
    }

    static std::shared_ptr<CamScreen> make(CamScreen::Kind kind, const std::string& place,
                                           int depth) {
        if (depth > kMostScreensDeep) {
            cam_json::fault(place, fmt::format("is more than {} screens deep", kMostScreensDeep));
        }
        auto screen = std::make_shared<CamScreen>();
        screen->kind = kind;
        return screen;
    }

    /** Reads a menu or list: an object, or the array of its items alone. */
    Screen menuOrList(CamScreen::Kind kind, const json& value, const std::string& place,
                      int depth) const {
        const auto screen = make(kind, place, depth);
        if (value.is_array()) {
            addItems(*screen, value, place, depth);
            return screen;
        }
        const cam_json::Object object(value, place, {"title", "subtitle", "bottom", "items"});
        addTitles(*screen, object);
        addItems(*screen, object.need("items"), object.place("items"), depth);
        return screen;
    }

    static void addTitles(CamScreen& screen, const cam_json::Object& object) {
        screen.title = object.optionalText("title");
        screen.subtitle = object.optionalText("subtitle");
        screen.bottom = object.optionalText("bottom");
    }

    static void checkCount(const json& items, const std::string& place) {
        if (!items.is_array()) cam_json::fault(place, "must be an array");
        if (items.size() > CI_MMI_MENU_MAX_ITEMS) {
            cam_json::fault(place,
                            fmt::format("must have at most {} items", int{CI_MMI_MENU_MAX_ITEMS}));
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
            item.text = cam_json::text(value, place);
            return item;
        }
        const cam_json::Object object(value, place,
                                      {"text", "title", "subtitle", "bottom", "items", "menu",
                                       "list", "enquiry", "pin", "info", "upgrade"});
        item.text = object.optionalText(object.find("text") == nullptr ? "title" : "text");
        int actions = 0;
        // Whether the item has the action; an item of a menu may have one, one of a list none.
        const auto hasAction = [&](const char* name) {
            if (object.find(name) == nullptr) return false;
            if (kind == CamScreen::kList) {
                cam_json::fault(object.place(name), "a list only informs");
            }
            if (++actions > 1) cam_json::fault(place, "must do one thing only");
            return true;
        };
        for (const char* name : kKinds) {
            if (!hasAction(name)) continue;
            item.opens = ofKind(name, object.need(name), object.place(name), item.text, depth + 1);
        }
        if (hasAction("items")) item.opens = subMenu(object, place, depth + 1);
        if (hasAction("upgrade")) {
            item.upgrades = object.flag("upgrade");
            if (!item.upgrades) cam_json::fault(object.place("upgrade"), "must be true");
        }
        return item;
    }

    /** Reads the menu whose fields are those of the item that opens it. */
    Screen subMenu(const cam_json::Object& object, const std::string& place, int depth) const {
        const auto screen = make(CamScreen::kMenu, place, depth);
        addTitles(*screen, object);
        addItems(*screen, object.need("items"), object.place("items"), depth);
        return screen;
    }

    /** Reads a list whose items are one text or an array of texts. */
    static Screen information(const json& value, const std::string& place, const CamText& title,
                              int depth) {
        const auto screen = make(CamScreen::kList, place, depth);
        screen->title = title;
        if (value.is_string()) {
            screen->items.push_back({cam_json::text(value, place), nullptr, false});
            return screen;
        }
        checkCount(value, place);
        for (size_t i = 0; i < value.size(); ++i) {
            screen->items.push_back(
                    {cam_json::text(value[i], fmt::format("{}/{}", place, i)), nullptr, false});
        }
        return screen;
    }

    Screen enquiry(const json& value, const std::string& place, int depth) const {
        const cam_json::Object object(value, place,
                                      {"prompt", "length", "blind", "accept", "then"});
        const auto screen = make(CamScreen::kEnquiry, place, depth);
        screen->prompt = object.optionalText("prompt");
        screen->length = static_cast<uint8_t>(object.number("length", 1, UINT8_MAX));
        screen->blind = object.flag("blind");
        screen->accept = object.optionalText("accept", screen->length);
        addThen(*screen, object, depth);
        return screen;
    }

    Screen pin(const json& value, const std::string& place, int depth) const {
        if (mPin.empty()) cam_json::fault(place, "needs the \"pin\" of the module");
        const auto screen = make(CamScreen::kPin, place, depth);
        screen->prompt = utf16FromUtf8(kPinPrompt);
        screen->length = CamCard::kPinDigits;
        screen->blind = true;
        screen->accept = utf16FromUtf8(mPin);
        if (value.is_boolean() && value.get<bool>()) return screen;
        if (value.is_string()) {
            screen->prompt = cam_json::text(value, place);
            return screen;
        }
        const cam_json::Object object(value, place, {"prompt", "then"});
        if (object.find("prompt") != nullptr) screen->prompt = object.optionalText("prompt");
        addThen(*screen, object, depth);
        return screen;
    }

    void addThen(CamScreen& enquiry, const cam_json::Object& object, int depth) const {
        const json* then = object.find("then");
        if (then != nullptr) enquiry.then = screen(*then, object.place("then"), depth + 1);
    }

    const std::string& mPin;
};

}  // namespace

std::shared_ptr<const CamScreen> readCamScreen(const json& value, const std::string& place,
                                               const std::string& pin) {
    return ScreenReader(pin).screen(value, place, 1);
}

}  // namespace television
