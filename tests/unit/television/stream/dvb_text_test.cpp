// Texts of the character tables that broadcasters use, and texts in fields of records.
#include "television/stream/dvb_text.h"

#include <gtest/gtest.h>

#include <string>

using television::ByteView;
using television::copyText;
using television::dvbTextToUtf8;

namespace {

std::string decode(const std::string& bytes) {
    return dvbTextToUtf8(ByteView(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
}

TEST(DvbText, DefaultTableCombinesAccents) {
    EXPECT_EQ(decode("Premi\xC1"
                     "ere"),
              "Première");
    EXPECT_EQ(decode("\xC8"
                     "Osterreich \xCF"
                     "Cesko \xE1\xF9"),
              "Österreich Česko Æø");
}

TEST(DvbText, DefaultTableKeepsAccentsThatHaveNoComposedLetter) {
    EXPECT_EQ(decode("\xC2q"), "q\u0301");
}

TEST(DvbText, DefaultTableHasTheEuroSign) {
    EXPECT_EQ(decode("5 \xA4"), "5 €");
}

TEST(DvbText, AccentAtTheEndIsReplaced) {
    EXPECT_EQ(decode("caf\xC2"), "caf\uFFFD");
}

TEST(DvbText, SelectorsOneToElevenAreIso8859) {
    EXPECT_EQ(decode("\x01\xBF\xD5\xE0\xD2\xEB\xD9"), "Первый");
    EXPECT_EQ(decode("\x03\xC5\xEB\xEB\xDC\xE4\xE1"), "Ελλάδα");
    EXPECT_EQ(decode("\x05\xDDstanbul"), "İstanbul");
    EXPECT_EQ(decode("\x0B\xA4"), "€");
}

TEST(DvbText, ThreeByteSelectorNamesTheTable) {
    EXPECT_EQ(decode(std::string("\x10\x00\x02", 3) + "\xA3\xF3\x64\xBC"), "Łódź");
    EXPECT_EQ(decode(std::string("\x10\x00\x01", 3) + "\xE9"), "é");
}

TEST(DvbText, UnknownTableKeepsWhatIsAscii) {
    EXPECT_EQ(decode(std::string("\x10\x7F\xFF", 3) + "ab\xE9"), "ab\uFFFD");
    EXPECT_EQ(decode("\x08x\xC0"), "x\uFFFD");  // part 12 was never written
}

TEST(DvbText, TwoByteUnicode) {
    EXPECT_EQ(decode(std::string("\x11\x4E\x2D\x56\xFD", 5)), "中国");
    EXPECT_EQ(decode(std::string("\x11\x00\x41\x00", 4)), "A\uFFFD");  // half a character
    EXPECT_EQ(decode(std::string("\x11\xE0\x86\x00\x41\xE0\x87", 7)), "A");
}

TEST(DvbText, Utf8IsChecked) {
    EXPECT_EQ(decode("\x15日本"), "日本");
    EXPECT_EQ(decode("\x15"
                     "a\xC0\x80z\xED\xA0\x80"),
              "a\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(decode("\x15"
                     "a\xC2\x86"
                     "b\xC2\x87\xC2\x8A"
                     "c\xEE\x82\x8A"),
              "ab\nc\n");
}

TEST(DvbText, OtherAsianTables) {
    EXPECT_EQ(decode("\x12\xC7\xD1"), "한");
    EXPECT_EQ(decode("\x13\xD6\xD0"), "中");
    EXPECT_EQ(decode("\x12"
                     "A\xC7"),
              "A\uFFFD");
}

TEST(DvbText, ControlCodesAreLeftOutAndLinesBroken) {
    EXPECT_EQ(decode("\x86"
                     "BBC\x87 One\x8A"
                     "HD\x99"),
              "BBC One\nHD");
    EXPECT_EQ(decode("A\x07"
                     "B"),
              "AB");
}

TEST(DvbText, EmptyAndSelectorOnly) {
    EXPECT_EQ(decode(""), "");
    EXPECT_EQ(decode("\x11"), "");
    EXPECT_EQ(decode("\x10"), "");
    EXPECT_EQ(decode("\x15"), "");
    EXPECT_EQ(decode("\x1F\x01zzz"), "");
}

TEST(DvbText, CopyCutsAtACharacter) {
    char field[6];
    copyText(field, "abcdé");  // the é would end at the sixth byte, which is the NUL's
    EXPECT_STREQ(field, "abcd");
    copyText(field, "abcé");
    EXPECT_STREQ(field, "abcé");
    copyText(field, "x");
    EXPECT_EQ(std::string(field, 6), std::string("x\0\0\0\0\0", 6));
}

}  // namespace
