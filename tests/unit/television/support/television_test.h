/** A television in the test's process, with folders of its own, and short functions to read its
 * lists. */
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "middleware/channellist.h"
#include "support/temp_folder.h"
#include "television/generator/stream_writer.h"
#include "television/television.h"

/** The television neither watches the folder of streams nor ticks, unless the test sets `options`.
 */
class TelevisionTest : public testing::Test {
  protected:
    TelevisionTest() {
        mkdir(streams().c_str(), 0700);
        options.streams = streams();
        options.state = mFolder / "state";
        options.watch = false;
        options.tick = std::chrono::hours(1);
    }

    /** Starts the television with the demo's streams. */
    void startWithDemo() {
        stream_generator::writeStreams(streams(), stream_generator::demoPlans());
        start();
    }
    void start() {
        tv = std::make_unique<television::Television>(options);
        tv->start();
    }
    void restart() {
        tv.reset();
        start();
    }

    std::string streams() const { return mFolder / "streams"; }
    const TempFolder& folder() const { return mFolder; }

    /** The services of a list, in its order. */
    static std::vector<SVL_REC_T> services(uint32_t list) {
        const int32_t count = a_qortvapi_channellist_get_number_by_mask(list, 0, 0, 0, 0, 0);
        if (count <= 0) return {};
        std::vector<SVL_REC_T> records(static_cast<size_t>(count));
        std::vector<TSL_REC_T> multiplexes(records.size());
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                          list, 0, 0, 0, 0, 0, 0, 0, 0, static_cast<uint32_t>(count),
                          records.data(), multiplexes.data()),
                  count);
        return records;
    }
    static std::vector<std::string> names(uint32_t list) {
        std::vector<std::string> result;
        for (const SVL_REC_T& record : services(list)) result.emplace_back(record.s_service_name);
        return result;
    }
    static SVL_REC_T service(uint32_t list, const std::string& name) {
        for (const SVL_REC_T& record : services(list)) {
            if (name == record.s_service_name) return record;
        }
        ADD_FAILURE() << "no service " << name;
        return {};
    }
    static uint32_t channel(uint32_t list, const std::string& name) {
        return service(list, name).ui4_channel_id;
    }
    /** The names in a favourite list, whose bits and places are checked. */
    static std::vector<std::string> favourites(uint16_t list, uint8_t favouriteList) {
        std::vector<std::string> result;
        SVL_REC_T record;
        for (uint32_t i = 0; a_qortvapi_favorite_list_get_svl_rec_by_index(list, favouriteList, 0,
                                                                           0, i, &record) == TV_OK;
             ++i) {
            EXPECT_EQ(record.aui2_fav_index[favouriteList], i + 1);
            EXPECT_NE(record.ui4_nw_mask & (SB_VNET_FAVORITE1 << favouriteList), 0u);
            result.emplace_back(record.s_service_name);
        }
        return result;
    }

  private:
    TempFolder mFolder;

  protected:
    television::Options options;
    std::unique_ptr<television::Television> tv;
};
