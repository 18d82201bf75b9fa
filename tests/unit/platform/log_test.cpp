/** The log on Linux, as a program that links it writes it. */
#include <gtest/gtest.h>
#include <regex.h>
#include <stdio.h>

#include <string>
#include <vector>

namespace {

/** The lines that the probe writes to standard error, each checked for its front, which is cut off.
 */
std::vector<std::string> linesOfProbe(const std::string& environment,
                                      const std::string& arguments = "") {
    const std::string command = environment + " " LOG_PROBE " " + arguments + " 2>&1 >/dev/null";
    FILE* output = popen(command.c_str(), "r");
    std::vector<std::string> lines;
    char line[8192];
    // Date, time, process, thread; then the priority, the tag and the message.
    constexpr char kFront[] =
            "^[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}[.][0-9]{3} +[0-9]+ +[0-9]+ "
            "([VDIWEF] [[:alnum:]_]+: .*)\n$";
    regex_t front;
    EXPECT_EQ(regcomp(&front, kFront, REG_EXTENDED), 0);
    while (fgets(line, sizeof(line), output) != nullptr) {
        regmatch_t parts[2] = {};
        const bool matches = regexec(&front, line, 2, parts, 0) == 0;
        EXPECT_TRUE(matches) << line;
        lines.push_back(matches ? std::string(line + parts[1].rm_so, line + parts[1].rm_eo) : "");
    }
    regfree(&front);
    EXPECT_EQ(pclose(output), 0);
    return lines;
}

const std::vector<std::string> kInfo = {R"(I probe: two\nlines)", "I probe: from the base library",
                                        "W probe: warn", "E probe: "};

TEST(PlatformLog, writesALineForEachMessageFromInfoOn) {
    EXPECT_EQ(linesOfProbe("env -u QORTV_LOG"), kInfo);
    EXPECT_EQ(linesOfProbe("QORTV_LOG="), kInfo);
    EXPECT_EQ(linesOfProbe("QORTV_LOG=info"), kInfo);
}

TEST(PlatformLog, writesWhatItIsToldTo) {
    const std::vector<std::string> debug = {"D probe: debug", kInfo[0],
                                            kInfo[1],         "D probe: debug of the base library",
                                            "W probe: warn",  "E probe: "};
    EXPECT_EQ(linesOfProbe("QORTV_LOG=debug"), debug);
    std::vector<std::string> verbose = debug;
    verbose.insert(verbose.begin(), "V probe: verbose");
    EXPECT_EQ(linesOfProbe("QORTV_LOG=verbose"), verbose);
    EXPECT_EQ(linesOfProbe("QORTV_LOG=warn"), (std::vector<std::string>{kInfo[2], kInfo[3]}));
    EXPECT_EQ(linesOfProbe("QORTV_LOG=error"), std::vector<std::string>{kInfo[3]});
}

TEST(PlatformLog, namesAValueThatItDoesNotKnow) {
    std::vector<std::string> expected = kInfo;
    expected.insert(expected.begin(),
                    "W log: QORTV_LOG=loud is none of verbose, debug, info, warn, error");
    EXPECT_EQ(linesOfProbe("QORTV_LOG=loud"), expected);
}

TEST(PlatformLog, keepsTheLinesOfManyThreadsWhole) {
    std::vector<std::string> lines = linesOfProbe("", "threads");
    EXPECT_EQ(lines.size(), 4u * 200);
    for (const std::string& line : lines) {
        const std::string expected = "E probe: " + std::string(500, line.back());
        ASSERT_EQ(line, expected);
    }
}

}  // namespace
