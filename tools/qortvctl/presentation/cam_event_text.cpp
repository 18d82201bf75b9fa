#include "qortvctl/presentation/cam_event_text.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <variant>

#include "qortvctl/text/utf8.h"

namespace qortvctl {

using Json = nlohmann::ordered_json;

namespace {

using Lines = std::vector<std::string>;
using OptionalText = std::optional<std::string>;

/** Adds a line, unless the text is missing or empty. */
void addText(Lines& lines, const OptionalText& text) {
    if (text && !text->empty()) lines.push_back(withoutControls(*text));
}

struct ToLines {
    Lines operator()(const qortv::CamMenu& menu) const {
        Lines lines;
        addText(lines, menu.title);
        addText(lines, menu.subtitle);
        const size_t width = std::to_string(menu.items.size()).size();
        size_t number = 0;
        for (const auto& item : menu.items) {
            lines.push_back(fmt::format("  {:>{}}  {}", ++number, width, withoutControls(item)));
        }
        if (menu.items.empty()) lines.emplace_back("  (no items)");
        addText(lines, menu.bottom);
        return lines;
    }
    Lines operator()(const qortv::CamList& list) const {
        Lines lines;
        addText(lines, list.title);
        addText(lines, list.subtitle);
        for (const auto& item : list.items) lines.push_back("  " + withoutControls(item));
        addText(lines, list.bottom);
        return lines;
    }
    Lines operator()(const qortv::CamEnquiry& enquiry) const {
        Lines lines;
        addText(lines, enquiry.text);
        return lines;
    }
    Lines operator()(const qortv::CamClosed& closed) const {
        return {closed.by == qortv::CamClosed::By::kRemoval ? "the dialogue broke off"
                                                            : "the dialogue is over"};
    }
    Lines operator()(const qortv::CamCard& card) const {
        return {card.inserted ? "a CAM was inserted" : "the CAM was removed"};
    }
    Lines operator()(const qortv::CamPinReply& reply) const {
        return {fmt::format("PIN {}", name(reply.state))};
    }
    Lines operator()(const qortv::CamUpgrade& upgrade) const {
        return {fmt::format("firmware upgrade to version {}", upgrade.version)};
    }
    Lines operator()(const qortv::CamUpgradeProgress& progress) const {
        return {fmt::format("firmware upgrade: {} %", progress.percent)};
    }
    Lines operator()(const qortv::CamFault& fault) const {
        if (fault.kind == qortv::CamFault::Kind::kUnusable) return {"the CAM cannot be used"};
        return {fmt::format("the firmware upgrade broke off at {} %", fault.percent)};
    }
};

Json orNull(const OptionalText& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json menuJson(const char* event, const qortv::CamMenu& menu) {
    return {{"event", event},
            {"id", menu.id},
            {"title", orNull(menu.title)},
            {"subtitle", orNull(menu.subtitle)},
            {"bottom", orNull(menu.bottom)},
            {"items", menu.items}};
}

struct ToJson {
    Json operator()(const qortv::CamMenu& menu) const { return menuJson("menu", menu); }
    Json operator()(const qortv::CamList& list) const { return menuJson("list", list); }
    Json operator()(const qortv::CamEnquiry& enquiry) const {
        return {{"event", "enquiry"},
                {"id", enquiry.id},
                {"text", orNull(enquiry.text)},
                {"answerLength", enquiry.answerLength},
                {"blind", enquiry.blind}};
    }
    Json operator()(const qortv::CamClosed& closed) const {
        return {{"event", "closed"}, {"by", name(closed.by)}};
    }
    Json operator()(const qortv::CamCard& card) const {
        return {{"event", card.inserted ? "inserted" : "removed"}};
    }
    Json operator()(const qortv::CamPinReply& reply) const {
        return {{"event", "pin"}, {"state", name(reply.state)}};
    }
    Json operator()(const qortv::CamUpgrade& upgrade) const {
        return {{"event", "upgrade"}, {"version", upgrade.version}};
    }
    Json operator()(const qortv::CamUpgradeProgress& progress) const {
        return {{"event", "upgradeProgress"}, {"percent", progress.percent}};
    }
    Json operator()(const qortv::CamFault& fault) const {
        if (fault.kind == qortv::CamFault::Kind::kUnusable) return {{"event", "unusable"}};
        return {{"event", "upgradeBroken"}, {"percent", fault.percent}};
    }
};

}  // namespace

std::vector<std::string> toLines(const qortv::CamEvent& event) {
    return std::visit(ToLines{}, event);
}

std::string toJsonLine(const qortv::CamEvent& event) {
    return std::visit(ToJson{}, event).dump();
}

}  // namespace qortvctl
