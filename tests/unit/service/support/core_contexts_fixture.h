/** The fixture of the tests of service contexts, devices and power control: their log lines. */
#pragma once

#include "support/core_fixture.h"

class CoreContextsTest : public CoreTest {
  protected:
    /** The lines with `tag` that were logged since the last look; forgets the others. */
    std::vector<LogLine> linesOf(const std::string& tag) {
        std::vector<LogLine> lines;
        for (LogLine& line : log.take()) {
            if (line.tag == tag) lines.push_back(std::move(line));
        }
        return lines;
    }

    /** Calls `request` with debugging on, and expects exactly `lines`; and none with it off. */
    template <typename Request>
    void expectDebugLines(const std::vector<LogLine>& lines, const Request& request) {
        log.take();
        request();
        EXPECT_EQ(log.take(), lines);
        mTvApiDebug = 0;
        request();
        EXPECT_EQ(log.take(), std::vector<LogLine>{});
        mTvApiDebug = 1;
    }
};
