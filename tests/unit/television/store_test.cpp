#include <fcntl.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <map>

#include "log_capture.h"
#include "television_test.h"

namespace {

using namespace stream_generator;
using Names = std::vector<std::string>;

class TelevisionStore : public TelevisionTest {
  protected:
    std::string database() const { return options.state + "/qortv.db"; }

    static std::map<std::string, uint32_t> ids() {
        std::map<std::string, uint32_t> result;
        for (const uint32_t list : {1u, 2u, 3u}) {
            for (const SVL_REC_T& record : services(list)) {
                result[record.s_service_name] = record.ui4_channel_id;
            }
        }
        return result;
    }
};

TEST_F(TelevisionStore, IdsAndNumbersAreTheSameAfterARestart) {
    // The second half comes first, so that a fresh scan would number differently.
    auto plans = demoPlans();
    writeStreams(streams(), {plans[4], plans[2]});
    start();
    const auto first = ids();
    const auto satelliteNames = names(SVL_ID_SATELLITE);
    writeStreams(streams(), plans);
    restart();
    const auto second = ids();
    EXPECT_EQ(second.size(), 40u);
    for (const auto& [name, id] : first) EXPECT_EQ(second.at(name), id) << name;
    const auto satelliteAfter = names(SVL_ID_SATELLITE);
    EXPECT_TRUE(std::equal(satelliteNames.begin(), satelliteNames.end(), satelliteAfter.begin()));
    restart();
    EXPECT_EQ(ids(), second);
}

TEST_F(TelevisionStore, ServicesThatComeBackHaveTheirIdsAgain) {
    writeStreams(streams(), demoPlans());
    start();
    const auto before = ids();
    std::filesystem::remove(streams() + "/dvb-s-1.ts");
    restart();
    EXPECT_EQ(ids().size(), 35u);
    writeStreams(streams(), demoPlans());
    restart();
    EXPECT_EQ(ids(), before);
}

TEST_F(TelevisionStore, MissingFolderOfStreamsLosesNothing) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première")), TV_OK);
    const auto before = ids();
    const LogCapture log;
    std::filesystem::rename(streams(), streams() + ".away");
    restart();
    EXPECT_TRUE(log.has("cannot read the folder", streams()));
    EXPECT_EQ(ids(), before);
    EXPECT_EQ(favourites(1, 0), Names{"Première"});
}

TEST_F(TelevisionStore, FileThatCannotBeReadKeepsItsServices) {
    startWithDemo();
    const auto before = ids();
    const LogCapture log;
    const std::string file = streams() + "/dvb-c-2.ts";
    std::filesystem::remove(file);
    std::filesystem::create_symlink("dvb-c-2.ts", file);  // to itself
    restart();
    EXPECT_TRUE(log.has("cannot read the stream", file));
    EXPECT_EQ(ids(), before);
}

TEST_F(TelevisionStore, EmptyFolderEmptiesTheLists) {
    startWithDemo();
    std::filesystem::remove_all(streams());
    std::filesystem::create_directory(streams());
    const LogCapture log;
    restart();
    EXPECT_TRUE(log.has("no streams", streams()));
    EXPECT_TRUE(ids().empty());
    EXPECT_EQ(a_qortvapi_channellist_get_current_chan_id(), TV_NOT_FOUND);
}

TEST_F(TelevisionStore, NobodyElseMayReadIt) {
    startWithDemo();
    struct stat status = {};
    ASSERT_EQ(stat(database().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    ASSERT_EQ(stat(options.state.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(TelevisionStore, DamagedDatabaseIsNamedAndLeftAlone) {
    startWithDemo();
    tv.reset();
    const std::string garbage(5000, 'g');
    std::ofstream(database(), std::ios::binary | std::ios::trunc) << garbage;
    const LogCapture log;
    start();
    EXPECT_TRUE(log.has(database(), "not a database", "in memory only"));
    EXPECT_EQ(ids().size(), 40u);
    EXPECT_EQ(a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première")), TV_OK);
    EXPECT_EQ(favourites(1, 0), Names{"Première"});
    EXPECT_EQ(std::filesystem::file_size(database()), garbage.size());
}

TEST_F(TelevisionStore, DamageInTheMiddleIsNoticed) {
    startWithDemo();
    tv.reset();
    {
        std::fstream file(database(), std::ios::in | std::ios::out | std::ios::binary);
        const auto size = static_cast<std::streamoff>(std::filesystem::file_size(database()));
        const std::string zeros(4096, '\xEE');
        for (std::streamoff at = 4096; at + 4096 <= size; at += 4096) {
            file.seekp(at);
            file << zeros;
        }
    }
    const LogCapture log;
    start();
    EXPECT_TRUE(log.has(database(), "in memory only"));
    EXPECT_EQ(ids().size(), 40u);
}

TEST_F(TelevisionStore, DatabaseOfAnotherVersionIsLeftAlone) {
    startWithDemo();
    tv.reset();
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(database().c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "PRAGMA user_version=99", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    const LogCapture log;
    start();
    EXPECT_TRUE(log.has(database(), "another version"));
    EXPECT_EQ(ids().size(), 40u);
}

TEST_F(TelevisionStore, RowsThatMakeNoSenseAreLeftOut) {
    startWithDemo();
    const auto before = ids();
    tv.reset();
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(database().c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle,
                           "INSERT INTO records VALUES(1, 1, 900, 0, 0, x'0102');"
                           "INSERT INTO records VALUES(1, 77, 1, 0, 0, x'00');"
                           "INSERT INTO records VALUES(99, 1, 1, 0, 0, NULL);"
                           "INSERT INTO favourites VALUES(1, 9, 1, 5);"
                           "INSERT INTO favourites VALUES(1, 0, 1, 4242);"
                           "INSERT INTO settings VALUES(-5, 5)",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(handle);
    start();
    EXPECT_EQ(ids(), before);
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(1, 0, 0, 0), 0);
}

TEST_F(TelevisionStore, StateFolderThatCannotBeMadeIsNamed) {
    const LogCapture log;
    folder().write("file", {1});
    options.state = folder() / "file/below";
    startWithDemo();
    EXPECT_TRUE(log.has(options.state, "in memory only"));
    EXPECT_EQ(ids().size(), 40u);
}

TEST_F(TelevisionStore, FullDiskIsNamedAndNothingStops) {
    startWithDemo();
    const LogCapture log;
    // Files may grow no more, as on a full disk.
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    const int32_t result = a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première"));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(result, TV_OK);
    EXPECT_TRUE(log.has(database(), "in memory only"));
    EXPECT_EQ(favourites(1, 0), Names{"Première"});
    const size_t lines = log.size();
    EXPECT_EQ(a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Ærø Nyt")), TV_OK);
    EXPECT_EQ(log.size(), lines);  // said once
    restart();
    EXPECT_EQ(favourites(1, 0), Names());  // the database is as it was before
    EXPECT_EQ(ids().size(), 40u);
}

TEST_F(TelevisionStore, KeysAreNeverLogged) {
    const LogCapture log;
    startWithDemo();
    uint32_t list = 0;
    uint32_t id = 0;
    a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(BSL_ID_MAIN, &list);
    BSL_REC_T key = {};
    std::memcpy(key.aui1_key, "SECRET42", 8);
    ASSERT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_ADD, &key, &id), TV_OK);
    EXPECT_FALSE(log.has("SECRET42"));
}

}  // namespace
