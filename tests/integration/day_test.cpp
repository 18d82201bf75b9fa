// A day of television in fast motion: four applications scan, zap, read the guide and record at the
// same time, and everybody hears everything.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <regex>
#include <sstream>
#include <string>

#include "day.h"
#include "middleware/record.h"
#include "qortv/connect.h"
#include "support.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiRecord.h"

namespace integration {
namespace {

using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiRecord;

/** The slowest first. */
constexpr const char* kRoles[] = {"scanner", "recorder", "reader", "zapper"};
/** A day lasts until every viewer has lived so many rounds. */
constexpr size_t kDay = 66;
/** By then every part of the service was in use, and has the memory that it keeps. */
constexpr size_t kWarm = 16;
/** Growth that is no leak: what the allocator, the threads' stacks and the database's cache keep.
 */
constexpr size_t kSlackKib = 4096;

class IntegrationDay : public testing::Test {
  protected:
    void SetUp() override {
        mStation.keepNoFreedMemory();
        mStation.environment["QORTV_DEBUG"] = "1";  // the handlers' entry lines are counted
        mStation.environment["QORTV_RECORDINGS"] = mRecordings.path();
        mStation.makeStreams();
        mStation.startAndWait();
        mStation.enter();
        mRecord = qortv::connect<IQorTvApiRecord>(kPatience);
        mIdle = mStation.idleDescriptors();
        for (const char* role : kRoles) mViewers[role] = mStation.startViewer(role);
        for (const auto& [role, viewer] : mViewers) {
            ASSERT_TRUE(eventually([&, &viewer = viewer] {
                return countOf("ready\n", viewer->out()) == 1;
            })) << role
                << viewer->err();
        }
    }

    void announce(Hour hour) {
        ASSERT_EQ(qortv::valueOf(
                          mRecord->a_hidl_a_qortvapi_pvr_set_event(static_cast<uint32_t>(hour), 0),
                          "pvr_set_event"),
                  0);
    }

    /** Waits until every viewer has lived so many rounds, and each of them goes on. */
    void waitForRounds(size_t rounds) {
        for (const char* role : kRoles) {
            Process& viewer = *mViewers[role];
            ASSERT_TRUE(eventuallyWhileMoving(
                    [&] { return countOf("round\n", viewer.out()) >= rounds; },
                    [&] { return viewer.written(); }))
                    << role << " stands still\n"
                    << viewer.err();
        }
    }

    /** Notifications that the service had to deliver from the morning to the night. */
    std::map<std::string, int> delivered() {
        // A handler's first line; those with data print more of them, and no handler here has any.
        static const std::regex entry("<(_\\w+):\\d+> +(e_code|i4_\\w+) = (\\d+)");
        std::map<std::string, int> counts;
        int announcements = 0;
        std::istringstream log(mStation.log());
        for (std::string line; std::getline(log, line);) {
            if (line.find("<_") == std::string::npos) continue;
            std::smatch match;
            if (!std::regex_search(line, match, entry)) continue;
            const bool announcement = match[1] == "_record_callback_fct" &&
                                      match[3] == std::to_string(RECORD_NFY_EVENT);
            if (announcement && ++announcements == 1) continue;
            if (announcements == 3) break;
            if (announcements > 0) ++counts[match[1]];
        }
        EXPECT_EQ(announcements, 3);
        return counts;
    }

    TemporaryFolder mRecordings;
    Station mStation;
    size_t mIdle = 0;  ///< descriptors before the viewers came
    android::sp<IQorTvApiRecord> mRecord;
    std::map<std::string, std::unique_ptr<Process>> mViewers;
};

/** The number behind `text` in `out`; -1 where it is missing. */
int numberBehind(const std::string& text, const std::string& out) {
    const size_t place = out.find(text);
    return place == std::string::npos ? -1 : std::atoi(out.c_str() + place + text.size());
}

TEST_F(IntegrationDay, EverybodyHearsEverythingAndNothingGrows) {
    announce(Hour::kMorning);
    ASSERT_NO_FATAL_FAILURE(waitForRounds(kWarm));
    const size_t resident = mStation.residentKib();
    ASSERT_NO_FATAL_FAILURE(waitForRounds(kDay));
    announce(Hour::kEvening);
    for (const auto& [role, viewer] : mViewers) {
        ASSERT_TRUE(eventually([&, &viewer = viewer] {
            return countOf("done\n", viewer->out()) == 1;
        })) << role
            << viewer->err();
    }
    EXPECT_LE(mStation.residentKib(), resident + kSlackKib);
    RecordProperty("resident_before_kib", static_cast<int>(resident));
    RecordProperty("resident_after_kib", static_cast<int>(mStation.residentKib()));
    announce(Hour::kNight);
    // Whoever has heard the night has ended, and what everybody was to hear is in the log.
    for (const auto& [role, viewer] : mViewers) EXPECT_EQ(viewer->wait(), 0) << role;

    int sent = 0;
    const auto counts = delivered();
    for (const auto& [handler, count] : counts) sent += count;
    for (const char* handler :
         {"_scan_callback_fct", "_broadcast_nfy_fct", "_record_callback_fct",
          "_config_callback_fct", "_dt_nfy_fct", "_channellist_update_callback_fct"}) {
        ASSERT_EQ(counts.count(handler), 1U) << handler;
    }
    for (const auto& [role, viewer] : mViewers) {
        SCOPED_TRACE(role);
        const std::string out = viewer->out();
        EXPECT_EQ(numberBehind("heard all ", out), sent) << out;
        EXPECT_EQ(numberBehind("heard notifyScan ", out), counts.at("_scan_callback_fct"));
        EXPECT_EQ(numberBehind("heard notifyRecord ", out), counts.at("_record_callback_fct"));
        EXPECT_EQ(numberBehind("heard notifyConfig ", out), counts.at("_config_callback_fct"));
        EXPECT_EQ(numberBehind("heard notifyDateTime ", out), counts.at("_dt_nfy_fct"));
        EXPECT_GE(numberBehind("rounds ", out), static_cast<int>(kDay));
        EXPECT_EQ(countOf("errors \n", out), 1U) << out;
        EXPECT_EQ(viewer->err(), "");
    }
    EXPECT_EQ(numberBehind("rounds ", mViewers["reader"]->out()), counts.at("_config_callback_fct"))
            << "a round changes the setting once";
    RecordProperty("notifications", sent);
    EXPECT_TRUE(eventually([&] { return mStation.descriptors() == mIdle; }))
            << mStation.descriptors() << " descriptors instead of " << mIdle;
    EXPECT_TRUE(mStation.service().running());
}

}  // namespace
}  // namespace integration
