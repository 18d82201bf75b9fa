#include "television/stream/event_descriptors.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include "television/stream/descriptors.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

/** The language or country code at the offset `at`; empty when it does not consist of letters. */
std::string codeAt(ByteView content, size_t at) {
    std::string code;
    for (size_t i = 0; i < 3; ++i) {
        const auto c = static_cast<char>(content.u8(at + i));
        if ((c < 'a' || c > 'z') && (c < 'A' || c > 'Z')) return {};
        code += c;
    }
    return code;
}

/** Puts the details of an event together, which come in up to sixteen numbered extended event
 * descriptors: of the language that comes first. */
class ExtendedText {
  public:
    void take(ByteView content) {
        const std::string language = codeAt(content, 1);
        if (mParts.empty()) mLanguage = language;
        if (language != mLanguage) return;
        Part part;
        const size_t itemBytes = content.u8(4);
        ByteView items = content.part(5, itemBytes);
        while (!items.empty()) {
            const size_t nameBytes = items.u8(0);
            const size_t valueBytes = items.u8(1 + nameBytes);
            part.items.emplace_back(dvbTextToUtf8(items.part(1, nameBytes)),
                                    dvbTextToUtf8(items.part(2 + nameBytes, valueBytes)));
            items = items.from(2 + nameBytes + valueBytes);
        }
        part.text = dvbTextToUtf8(content.part(6 + itemBytes, content.u8(5 + itemBytes)));
        mParts.emplace(content.u8(0) >> 4, std::move(part));
    }

    /** The items as lines of "name: value", then the text of all parts. */
    std::string joined() const {
        const std::string items = joinedItems();
        std::string text;
        for (const auto& [number, part] : mParts) text += part.text;
        return items.empty() || text.empty() ? items + text : items + '\n' + text;
    }

  private:
    struct Part {
        std::vector<std::pair<std::string, std::string>> items;  ///< name and value
        std::string text;
    };

    std::string joinedItems() const {
        std::string text;
        for (const auto& [number, part] : mParts) {
            for (const auto& [name, value] : part.items) {
                // An item without a name continues the one before.
                if (!name.empty()) text += (text.empty() ? "" : "\n") + name + ": ";
                text += value;
            }
        }
        return text;
    }

    std::string mLanguage;
    std::map<unsigned, Part> mParts;  ///< by number
};

void readShortEvent(ByteView content, GuideEvent& event) {
    if (!event.title.empty()) return;  // only the first language is kept
    event.language = codeAt(content, 0);
    const size_t titleBytes = content.u8(3);
    event.title = dvbTextToUtf8(content.part(4, titleBytes));
    event.text = dvbTextToUtf8(content.part(5 + titleBytes, content.u8(4 + titleBytes)));
}

void readContents(ByteView content, GuideEvent& event) {
    for (size_t at = 0; at + 2 <= content.size(); at += 2) {
        if (event.contents.size() < kMostEventDetails) event.contents.push_back(content.u8(at));
    }
}

void readRatings(ByteView content, GuideEvent& event) {
    constexpr uint8_t kHighestAge = 0x0F;  // ratings above are the broadcaster's own
    constexpr uint8_t kLowestAge = 4;      // of the rating 1
    for (size_t at = 0; at + 4 <= content.size(); at += 4) {
        if (event.ratings.size() >= kMostEventDetails) return;
        const uint8_t rating = content.u8(at + 3);
        const bool isAge = rating >= 1 && rating <= kHighestAge;
        event.ratings.push_back(
                {codeAt(content, at), static_cast<uint8_t>(isAge ? rating + kLowestAge - 1 : 0)});
    }
}

void readComponent(ByteView content, GuideEvent& event) {
    constexpr uint8_t kAudio[] = {0x2, 0x4, 0x6, 0x7};  // MPEG, AC-3, AAC, DTS
    const uint8_t stream = content.u8(0) & 0x0F;
    if (std::find(std::begin(kAudio), std::end(kAudio), stream) == std::end(kAudio)) return;
    if (content.size() < 6 || event.audio.size() >= kMostEventDetails) return;
    event.audio.push_back({stream, content.u8(1), content.u8(2), codeAt(content, 3),
                           dvbTextToUtf8(content.from(6))});
}

void readIdentifiers(ByteView content, GuideEvent& event) {
    // Where the text of an identifier is.
    constexpr uint8_t kInDescriptor = 0;
    constexpr uint8_t kInOtherTable = 1;
    while (!content.empty()) {
        const uint8_t location = content.u8(0) & 0x03;
        if (location == kInOtherTable) {
            content = content.from(3);
            continue;
        }
        if (location != kInDescriptor || event.identifiers.size() >= kMostEventDetails) return;
        std::string text;
        for (size_t i = 0; i < content.u8(1); ++i) {
            const uint8_t c = content.u8(2 + i);
            if (c > 0x20 && c < 0x7F) text += static_cast<char>(c);
        }
        event.identifiers.push_back({static_cast<uint8_t>(content.u8(0) >> 2), std::move(text)});
        content = content.from(2u + content.u8(1));
    }
}

}  // namespace

void readEventDescriptors(ByteView loop, GuideEvent& event) {
    ExtendedText extended;
    while (!loop.empty()) {
        const ByteView content = loop.part(2, loop.u8(1));
        switch (loop.u8(0)) {
            case kDescriptorShortEvent:
                readShortEvent(content, event);
                break;
            case kDescriptorExtendedEvent:
                extended.take(content);
                break;
            case kDescriptorComponent:
                readComponent(content, event);
                break;
            case kDescriptorContent:
                readContents(content, event);
                break;
            case kDescriptorParentalRating:
                readRatings(content, event);
                break;
            case kDescriptorContentIdentifier:
                readIdentifiers(content, event);
                break;
            default:
                break;
        }
        loop = loop.from(2u + loop.u8(1));
    }
    event.extended = extended.joined();
}

}  // namespace television
