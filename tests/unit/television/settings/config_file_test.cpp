#include "television/settings/config_file.h"

#include <sys/stat.h>

#include "middleware/parser.h"
#include "middleware/result_codes.h"
#include "support/television_test.h"

namespace {

using television::parseConfig;
using television::parseNumber;

TEST(TelevisionConfig, SectionsKeysAndComments) {
    const auto values = parseConfig(
            "\xEF\xBB\xBF"
            "first = 1\r\n; no = 1\n#no=1\n[ one ]\n a b =  x = y \nempty=\n"
            "[]\nback=2\nquoted=\" x \"\n[broken\n=nothing\nno value\nback=3\n[two]\nlast=4");
    EXPECT_EQ(values, (std::map<std::string, std::string>{{"first", "1"},
                                                          {"one:a b", "x = y"},
                                                          {"one:empty", ""},
                                                          {"back", "3"},
                                                          {"quoted", " x "},
                                                          {"two:last", "4"}}));
    EXPECT_TRUE(parseConfig("").empty());
    EXPECT_TRUE(parseConfig(std::string(100, '\0')).empty());
    EXPECT_TRUE(parseConfig("[").empty());
    EXPECT_TRUE(parseConfig("=").empty());
}

TEST(TelevisionConfig, Numbers) {
    EXPECT_EQ(parseNumber("42"), 42);
    EXPECT_EQ(parseNumber("-42"), -42);
    EXPECT_EQ(parseNumber("0x1F"), 31);
    EXPECT_EQ(parseNumber("0xFFFFFFFF"), -1);
    EXPECT_EQ(parseNumber("-2147483648"), INT32_MIN);
    EXPECT_EQ(parseNumber("2147483647"), INT32_MAX);
    for (const char* text : {"", "-", "0x", "2147483648", "-2147483649", "0x100000000", "1 2", "1k",
                             "+1", "0xG", "99999999999999999999999", "--1", "-0x80000001"}) {
        EXPECT_FALSE(parseNumber(text)) << text;
    }
}

class TelevisionParser : public TelevisionTest {
  protected:
    TelevisionParser() {
        options.config = folder() / "config.ini";
        start();
    }
    void write(const std::string& text) const {
        folder().write("config.ini", {text.begin(), text.end()});
    }
};

TEST_F(TelevisionParser, BaseFile) {
    int32_t number = 7;
    EXPECT_EQ(a_qortvapi_parser_get_value("a:n", &number), TV_NOT_FOUND) << "no file yet";
    write("[a]\nn = 0x10\ntext = Grüße\nlong = " + std::string(256, 'l'));
    EXPECT_EQ(a_qortvapi_parser_get_value("a:n", &number), TV_OK);
    EXPECT_EQ(number, 16);
    EXPECT_EQ(a_qortvapi_parser_get_value("a:text", &number), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_parser_get_value("n", &number), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_parser_get_value(nullptr, &number), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_parser_get_value("a:n", nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(number, 16) << "nothing is written on failure";
    char text[PARSER_STRING_MAX] = {};
    uint32_t length = 0;
    EXPECT_EQ(a_qortvapi_parser_get_string("a:text", text, &length), TV_OK);
    EXPECT_STREQ(text, "Grüße");
    EXPECT_EQ(length, 7u);
    EXPECT_EQ(a_qortvapi_parser_get_string("a:text", text, nullptr), TV_OK);
    EXPECT_EQ(a_qortvapi_parser_get_string("a:long", text, &length), TV_INVALID_ARGUMENT);
    EXPECT_STREQ(text, "Grüße");
    write("[a]\nn=17");
    EXPECT_EQ(a_qortvapi_parser_get_value("a:n", &number), TV_OK);
    EXPECT_EQ(number, 17) << "read anew";

    std::vector<char> path(1000);
    EXPECT_EQ(a_qortvapi_get_base_config_file_path(path.data(), 1000), TV_OK);
    EXPECT_EQ(path.data(), options.config);
    EXPECT_EQ(a_qortvapi_get_base_config_file_path(path.data(),
                                                   static_cast<int16_t>(options.config.size())),
              TV_INVALID_ARGUMENT)
            << "half a path is of no use";
    EXPECT_EQ(a_qortvapi_get_base_config_file_path(path.data(), -1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_get_base_config_file_path(nullptr, 1000), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionParser, FileOfTheCall) {
    const std::string file = folder() / "other.ini";
    const std::string content = "top=1\n[s]\nkey=value";
    folder().write("other.ini", {content.begin(), content.end()});
    int32_t number = 0;
    EXPECT_EQ(a_qortvapi_parser_get_signed_config_data(file.c_str(), "top", &number), TV_OK);
    EXPECT_EQ(number, 1);
    char text[6] = "?????";
    EXPECT_EQ(a_qortvapi_parser_get_string_config_data(file.c_str(), "s:key", text, 5),
              TV_INVALID_ARGUMENT);
    EXPECT_STREQ(text, "?????");
    EXPECT_EQ(a_qortvapi_parser_get_string_config_data(file.c_str(), "s:key", text, 6), TV_OK);
    EXPECT_STREQ(text, "value");
    EXPECT_EQ(a_qortvapi_parser_get_string_config_data(file.c_str(), "s:key", text, INT16_MIN),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_parser_get_string_config_data(nullptr, "s:key", text, 6),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_parser_get_signed_config_data("", "top", &number), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_parser_get_signed_config_data((file + "/x").c_str(), "top", &number),
              TV_NOT_FOUND);
}

TEST_F(TelevisionParser, OddFiles) {
    int32_t number = 7;
    const auto read = [&](const std::string& path) {
        return a_qortvapi_parser_get_signed_config_data(path.c_str(), "k", &number);
    };
    EXPECT_EQ(read(folder().path()), TV_FAILED) << "a folder";
    ASSERT_EQ(mkfifo((folder() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(read(folder() / "pipe"), TV_FAILED) << "a pipe that nobody writes";
    EXPECT_EQ(read("/dev/zero"), TV_FAILED);
    folder().write("large", std::vector<uint8_t>(PARSER_FILE_MAX + 1, '\n'));
    EXPECT_EQ(read(folder() / "large"), TV_FAILED);
    std::vector<uint8_t> fits(PARSER_FILE_MAX, '\n');
    std::memcpy(fits.data(), "k=5", 3);
    folder().write("fits", fits);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(read(folder() / "fits"), TV_OK);
    EXPECT_EQ(number, 5);
    folder().write("empty", {});
    EXPECT_EQ(read(folder() / "empty"), TV_NOT_FOUND);
    folder().write("bytes", {0xFF, 0, 0xFE, '=', '\n', 'k', '=', '9'});
    EXPECT_EQ(read(folder() / "bytes"), TV_OK);
    EXPECT_EQ(number, 9);
}

}  // namespace
