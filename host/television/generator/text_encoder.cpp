#include "television/generator/text_encoder.h"

#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include <fmt/format.h>

namespace stream_generator {
namespace {

/** A character table: its name in the C library, and the bytes that select it in a text field. */
struct TableName {
    const char* charset;
    const char* selector;
    size_t selectorSize;
};

TableName tableName(TextTable table) {
    switch (table) {
        case TextTable::kIso6937:
            return {"ISO6937", "", 0};
        case TextTable::kIso8859_2:
            return {"ISO-8859-2", "\x10\x00\x02", 3};
        case TextTable::kIso8859_5:
            return {"ISO-8859-5", "\x01", 1};
        case TextTable::kIso8859_7:
            return {"ISO-8859-7", "\x03", 1};
        case TextTable::kIso8859_9:
            return {"ISO-8859-9", "\x05", 1};
        case TextTable::kUcs2:
            return {"UCS-2BE", "\x11", 1};
        case TextTable::kUtf8:
            return {"UTF-8", "\x15", 1};
    }
    throw std::invalid_argument("no such text table");
}

/** Stands for the euro sign while a text is converted: the broadcast table has it at 0xA4, where
 * the C library's ISO 6937 has nothing. */
constexpr char kEuroMark = '\x01';
constexpr char kEuroIso6937 = '\xA4';

void markEuros(std::string& text) {
    for (size_t at; (at = text.find("\u20AC")) != std::string::npos;) {
        text.replace(at, 3, 1, kEuroMark);
    }
}

}  // namespace

std::string encodeText(const std::string& utf8, TextTable table) {
    const TableName name = tableName(table);
    std::string result(name.selector, name.selectorSize);
    const iconv_t converter = iconv_open(name.charset, "UTF-8");
    if (reinterpret_cast<uintptr_t>(converter) == ~uintptr_t{0}) {
        throw std::invalid_argument(fmt::format("no character table {}", name.charset));
    }
    std::string from = utf8;
    if (table == TextTable::kIso6937) markEuros(from);
    std::vector<char> buffer(utf8.size() * 4 + 4);
    char* in = from.data();
    size_t left = from.size();
    char* out = buffer.data();
    size_t room = buffer.size();
    const bool bad = iconv(converter, &in, &left, &out, &room) == static_cast<size_t>(-1) ||
                     iconv(converter, nullptr, nullptr, &out, &room) == static_cast<size_t>(-1);
    iconv_close(converter);
    if (bad) {
        throw std::invalid_argument(
                fmt::format("\"{}\" cannot be written in {}", utf8, name.charset));
    }
    result.append(buffer.data(), out);
    if (table == TextTable::kIso6937) {
        std::replace(result.begin(), result.end(), kEuroMark, kEuroIso6937);
    }
    return result;
}

}  // namespace stream_generator
