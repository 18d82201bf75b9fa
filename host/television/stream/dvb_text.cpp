#include "television/stream/dvb_text.h"

#include <iconv.h>

#include <cstring>
#include <map>
#include <mutex>
#include <utility>

namespace television {
namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD

/** Combining characters of the ISO 6937 accents 0xC1 to 0xCF, for letters that have no composed
 * form. */
constexpr const char* kCombining[] = {"\u0300", "\u0301", "\u0302", "\u0303", "\u0304",
                                      "\u0306", "\u0307", "\u0308", "\u0308", "\u030A",
                                      "\u0327", "\u0332", "\u030B", "\u0328", "\u030C"};

/** Converts from one character table, which is opened at its first use only: most texts are plain
 * ASCII. One thread at a time. */
class Converter {
  public:
    explicit Converter(std::string charset) : mCharset(std::move(charset)) {}
    ~Converter() {
        if (mState == State::kOpen) iconv_close(mHandle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /** Appends the converted bytes. Returns false, with nothing appended, when the table does not
     * define them. */
    bool append(ByteView bytes, std::string& out) {
        if (mState == State::kNew) open();
        if (mState == State::kUnknown) return false;
        iconv(mHandle, nullptr, nullptr, nullptr, nullptr);
        char* from = reinterpret_cast<char*>(const_cast<uint8_t*>(bytes.data()));
        size_t left = bytes.size();
        char buffer[32];
        char* to = buffer;
        size_t room = sizeof(buffer);
        if (iconv(mHandle, &from, &left, &to, &room) == kFailed) return false;
        // A table with combining accents holds the last character back until it is asked for.
        if (iconv(mHandle, nullptr, nullptr, &to, &room) == kFailed) return false;
        out.append(buffer, to);
        return true;
    }

  private:
    enum class State { kNew, kOpen, kUnknown };
    static constexpr auto kFailed = static_cast<size_t>(-1);

    void open() {
        keepLoaded(mCharset);
        mHandle = iconv_open("UTF-8", mCharset.c_str());
        mState = reinterpret_cast<uintptr_t>(mHandle) == kFailed ? State::kUnknown : State::kOpen;
    }

    /** Opens the table once for the life of the process: the library behind it is neither loaded
     * anew for each text nor unloaded while another thread loads one. */
    static void keepLoaded(const std::string& charset) {
        static std::mutex mutex;
        // Guarded by the mutex, and never destroyed: threads may convert until the process ends.
        static auto& loaded = *new std::map<std::string, iconv_t>;
        std::lock_guard<std::mutex> lock(mutex);
        if (loaded.count(charset) == 0) loaded[charset] = iconv_open("UTF-8", charset.c_str());
    }

    const std::string mCharset;
    State mState = State::kNew;
    iconv_t mHandle = nullptr;
};

/** Appends a code below 0x20 or from 0x80 to 0x9F (0xE080 to 0xE09F in two-byte tables): only line
 * breaks show. */
void appendControl(uint8_t code, std::string& out) {
    if (code == 0x8A || code == '\n') out += '\n';
}

bool isControl(uint32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0xE080 && code <= 0xE09F);
}

void fromIso6937(ByteView text, std::string& out) {
    Converter converter("ISO6937");
    for (size_t at = 0; at < text.size(); ++at) {
        const uint8_t byte = text.u8(at);
        if (isControl(byte)) {
            appendControl(byte, out);
        } else if (byte < 0x80) {
            out += static_cast<char>(byte);
        } else if (byte == 0xA4) {
            out += "\u20AC";  // the euro sign: the one place where the broadcast table differs
        } else if (byte >= 0xC1 && byte <= 0xCF && at + 1 < text.size() &&
                   !isControl(text.u8(at + 1))) {
            ++at;
            if (!converter.append(text.part(at - 1, 2), out)) {
                if (!converter.append(text.part(at, 1), out)) out += kReplacement;
                out += kCombining[byte - 0xC1];
            }
        } else if (!converter.append(text.part(at, 1), out)) {
            out += kReplacement;
        }
    }
}

void fromIso8859(unsigned part, ByteView text, std::string& out) {
    Converter converter("ISO-8859-" + std::to_string(part));
    for (size_t at = 0; at < text.size(); ++at) {
        const uint8_t byte = text.u8(at);
        if (isControl(byte)) {
            appendControl(byte, out);
        } else if (byte < 0x80) {
            out += static_cast<char>(byte);
        } else if (!converter.append(text.part(at, 1), out)) {
            out += kReplacement;
        }
    }
}

/** Tables whose characters have one or two bytes, the first of two being 0x81 or more. */
void fromDoubleByte(const char* charset, ByteView text, std::string& out) {
    Converter converter(charset);
    for (size_t at = 0; at < text.size(); ++at) {
        const uint8_t byte = text.u8(at);
        if (byte < 0x80) {
            if (isControl(byte)) {
                appendControl(byte, out);
            } else {
                out += static_cast<char>(byte);
            }
            continue;
        }
        if (!converter.append(text.part(at, 2), out)) out += kReplacement;
        ++at;
    }
}

void fromUcs2(ByteView text, std::string& out) {
    Converter converter("UCS-2BE");
    for (size_t at = 0; at < text.size(); at += 2) {
        const uint16_t code = text.u16(at);
        if (at + 1 < text.size() && isControl(code)) {
            appendControl(static_cast<uint8_t>(code), out);
        } else if (!converter.append(text.part(at, 2), out)) {
            out += kReplacement;
        }
    }
}

/** Bytes of the well-formed UTF-8 character at the start of `text`, and its code; 0 bytes when
 * there is none. */
std::pair<size_t, uint32_t> utf8Character(ByteView text) {
    const uint8_t lead = text.u8(0);
    if (lead < 0x80) return {text.empty() ? 0 : 1, lead};
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {0, 0};
    uint32_t code = lead & (0xFFu >> (length + 1));
    for (size_t i = 1; i < length; ++i) {
        if ((text.u8(i) & 0xC0) != 0x80) return {0, 0};
        code = code << 6 | (text.u8(i) & 0x3Fu);
    }
    const uint32_t least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (code < least || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return {0, 0};
    return {length, code};
}

void fromUtf8(ByteView text, std::string& out) {
    while (!text.empty()) {
        const auto [length, code] = utf8Character(text);
        if (length == 0) {
            out += kReplacement;
        } else if (isControl(code)) {
            appendControl(static_cast<uint8_t>(code), out);
        } else {
            out.append(reinterpret_cast<const char*>(text.data()), length);
        }
        text = text.from(length == 0 ? 1 : length);
    }
}

}  // namespace

std::string dvbTextToUtf8(ByteView text) {
    std::string out;
    const uint8_t selector = text.u8(0);
    if (selector >= 0x20) {
        fromIso6937(text, out);
        return out;
    }
    switch (selector) {
        case 0x10:
            fromIso8859(text.u16(1), text.from(3), out);
            break;
        case 0x11:
        case 0x14:  // Chinese in two-byte Unicode
            fromUcs2(text.from(1), out);
            break;
        case 0x12:
            fromDoubleByte("EUC-KR", text.from(1), out);
            break;
        case 0x13:
            fromDoubleByte("GBK", text.from(1), out);
            break;
        case 0x15:
            fromUtf8(text.from(1), out);
            break;
        case 0x1F:  // a compression of a private registration: nothing that can be shown
            break;
        default:
            if (selector >= 0x01 && selector <= 0x0B) {
                fromIso8859(selector + 4u, text.from(1), out);
            } else {
                fromIso6937(text.from(1), out);
            }
    }
    return out;
}

void copyText(char* field, size_t size, const std::string& text) {
    size_t length = std::min(text.size(), size - 1);
    if (length < text.size()) {
        while (length > 0 && (static_cast<uint8_t>(text[length]) & 0xC0) == 0x80) --length;
    }
    std::memset(field, 0, size);
    text.copy(field, length);
}

}  // namespace television
