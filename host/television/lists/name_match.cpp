#include "television/lists/name_match.h"

#include <clocale>
#include <cstdint>
#include <cwctype>

namespace television {
namespace {

/** A locale with the C library's Unicode tables, whatever the locale of the process is; null when
 * the system has none. */
locale_t unicode() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

wchar_t lower(wchar_t c) {
    const locale_t locale = unicode();
    return static_cast<wchar_t>(locale == nullptr ? std::towlower(static_cast<wint_t>(c))
                                                  : towlower_l(static_cast<wint_t>(c), locale));
}

/** The lower-case code points of a UTF-8 text. Bytes that are not UTF-8 are taken as code points of
 * their own. */
std::wstring folded(const char* text) {
    std::wstring result;
    for (const auto* at = reinterpret_cast<const unsigned char*>(text); *at != 0;) {
        const unsigned lead = *at;
        const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        uint32_t code = more == 0 ? lead : lead & (0x3Fu >> more);
        int seen = 0;
        while (seen < more && (at[seen + 1] & 0xC0) == 0x80) {
            code = code << 6 | (at[++seen] & 0x3Fu);
        }
        if (seen < more) code = lead;
        at += seen < more ? 1 : more + 1;
        result += lower(static_cast<wchar_t>(code));
    }
    return result;
}

}  // namespace

NameMatch::NameMatch(const char* text) : mText(folded(text)) {}

bool NameMatch::operator()(const char* name) const {
    return mText.empty() || folded(name).find(mText) != std::wstring::npos;
}

}  // namespace television
