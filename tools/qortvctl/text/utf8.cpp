#include "qortvctl/text/utf8.h"

#include <climits>
#include <clocale>
#include <cwchar>
#include <cwctype>

namespace qortvctl {

namespace {

/** Calls `visit` with every character of a UTF-8 text; a byte that is not UTF-8 counts as U+FFFD.
 */
template <typename Visit>
void forEachCharacter(const std::string& text, Visit visit) {
    std::mbstate_t state{};
    for (size_t at = 0; at < text.size();) {
        wchar_t c = 0;
        const size_t length = std::mbrtowc(&c, text.data() + at, text.size() - at, &state);
        if (length == static_cast<size_t>(-1) || length == static_cast<size_t>(-2)) {
            state = {};
            visit(L'\xFFFD');
            ++at;
        } else {
            visit(c);
            at += length == 0 ? 1 : length;
        }
    }
}

void appendCharacter(std::string& text, wchar_t c) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    const size_t length = std::wcrtomb(bytes, c, &state);
    if (length != static_cast<size_t>(-1)) text.append(bytes, length);
}

bool isContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

void useUtf8() {
    std::setlocale(LC_CTYPE, "C.UTF-8");
}

size_t displayWidth(const std::string& text) {
    size_t width = 0;
    forEachCharacter(text, [&](wchar_t c) {
        const int columns = wcwidth(c);
        if (columns > 0) width += static_cast<size_t>(columns);
    });
    return width;
}

std::string cutToWidth(std::string text, size_t columns) {
    while (displayWidth(text) > columns) {
        while (!text.empty() && isContinuationByte(text.back())) text.pop_back();
        if (!text.empty()) text.pop_back();
    }
    return text;
}

std::string withoutControls(const std::string& text) {
    std::string shown;
    forEachCharacter(text, [&](wchar_t c) { appendCharacter(shown, std::iswcntrl(c) ? L'?' : c); });
    return shown;
}

std::string lowerCase(const std::string& text) {
    std::string lower;
    forEachCharacter(text, [&](wchar_t c) {
        appendCharacter(lower, static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c))));
    });
    return lower;
}

}  // namespace qortvctl
