// What the television remembers over restarts, and what it does when its database fails.
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <sstream>

#include "middleware/volctrl.h"
#include "support/eventually.h"
#include "support/log_capture.h"
#include "support/television_test.h"
#include "television/lists/store.h"

namespace {

using namespace stream_generator;
using Names = std::vector<std::string>;

class TelevisionStore : public TelevisionTest {
  protected:
    std::string database() const { return options.state + "/qortv.db"; }
    std::string damaged() const { return database() + ".damaged"; }

    /** Opens the database as another program does. */
    television::SqliteDatabase openDatabase() const {
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(database().c_str(), &handle), SQLITE_OK);
        return television::SqliteDatabase(handle);
    }
    static int64_t number(const television::SqliteDatabase& from, const char* sql) {
        television::SqliteStatement row(from.get(), sql);
        return row.step() ? row.integer(0) : -1;
    }

    /** Damages the database with `damage(path)`. Expects that it is moved aside for `reason`, which
     * the log has, and that a new one works. */
    template <typename Damage>
    void expectMovedAside(const std::string& reason, Damage damage) {
        startWithDemo();
        tv.reset();
        damage(database());
        const std::string content = contentOf(database());
        std::ofstream(damaged()) << "of an earlier time";
        const LogCapture log;
        start();
        EXPECT_TRUE(log.has(database(), damaged(), reason)) << reason;
        EXPECT_EQ(log.count(database()), 1u);
        EXPECT_EQ(contentOf(damaged()), content);
        EXPECT_EQ(ids().size(), 40u);
        EXPECT_EQ(a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première")), TV_OK);
        restart();
        EXPECT_EQ(favourites(1, 0), Names{"Première"});
        EXPECT_EQ(log.count(database()), 1u);
    }

    static std::string contentOf(const std::string& path) {
        std::stringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }

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

TEST_F(TelevisionStore, FileThatIsNoDatabaseIsMovedAside) {
    expectMovedAside("not a database", [](const std::string& path) {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << std::string(5000, 'g');
    });
}

TEST_F(TelevisionStore, DatabaseWithDamageInTheMiddleIsMovedAside) {
    expectMovedAside("database", [](const std::string& path) {
        std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
        const auto size = static_cast<std::streamoff>(std::filesystem::file_size(path));
        const std::string nonsense(4096, '\xEE');
        for (std::streamoff at = 4096; at + 4096 <= size; at += 4096) {
            file.seekp(at);
            file << nonsense;
        }
    });
}

TEST_F(TelevisionStore, DatabaseOfAnotherVersionIsMovedAside) {
    expectMovedAside("another version", [this](const std::string&) {
        television::execute(openDatabase().get(), "PRAGMA user_version=99");
    });
}

TEST_F(TelevisionStore, DatabaseWithOtherColumnsIsMovedAside) {
    expectMovedAside("no such column", [this](const std::string&) {
        television::execute(openDatabase().get(), "DROP TABLE named; CREATE TABLE named(other)");
    });
}

TEST_F(TelevisionStore, DatabaseThatCannotBeReadNowIsNotMoved) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première")), TV_OK);
    tv.reset();
    auto other = openDatabase();
    television::execute(other.get(), "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE");
    const LogCapture log;
    start();
    EXPECT_TRUE(log.has(database(), "database is locked", "in memory only"));
    EXPECT_EQ(ids().size(), 40u);
    EXPECT_FALSE(std::filesystem::exists(damaged()));
    other.reset();
    restart();
    EXPECT_EQ(favourites(1, 0), Names{"Première"});
}

TEST_F(TelevisionStore, RowsThatMakeNoSenseAreLeftOut) {
    startWithDemo();
    const auto before = ids();
    tv.reset();
    television::execute(openDatabase().get(),
                        "INSERT INTO records VALUES(1, 1, 900, 0, 0, x'0102');"
                        "INSERT INTO records VALUES(1, 77, 1, 0, 0, x'00');"
                        "INSERT INTO records VALUES(99, 1, 1, 0, 0, NULL);"
                        "INSERT INTO favourites VALUES(1, 9, 1, 5);"
                        "INSERT INTO favourites VALUES(1, 0, 1, 4242);"
                        "INSERT INTO settings VALUES(-5, 5)");
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

TEST_F(TelevisionStore, ChangesOnAFullDiskAreSavedWhenThereIsRoom) {
    startWithDemo();
    const LogCapture log;
    // Files may grow no more, as on a full disk.
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    const int32_t result = a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première"));
    EXPECT_EQ(a_qortvapi_volctrl_setMute(true), TV_OK);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(result, TV_OK);
    EXPECT_TRUE(log.has(database(), "kept in memory until"));
    EXPECT_EQ(log.size(), 1u);
    restart();
    EXPECT_TRUE(log.has(database(), "all changes are saved again"));
    EXPECT_EQ(favourites(1, 0), Names{"Première"});
    EXPECT_TRUE(a_qortvapi_volctrl_getMute_by_type(VOLCTRL_TYPE_SPEAKER));
    EXPECT_EQ(ids().size(), 40u);
}

TEST_F(TelevisionStore, ChangesWhileTheDatabaseIsLockedAreSavedWithALaterOne) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(1, 1, channel(1, "Première")), TV_OK);
    const LogCapture log;
    const auto other = openDatabase();
    television::execute(other.get(), "BEGIN IMMEDIATE");
    EXPECT_EQ(a_qortvapi_volctrl_setMute(true), TV_OK);
    EXPECT_EQ(a_qortvapi_favorite_list_add_tail(1, 0, channel(1, "Première")), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_setVolume(41), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_setVolume(42), TV_OK);
    EXPECT_TRUE(log.has(database(), "database is locked", "kept in memory until"));
    EXPECT_EQ(log.size(), 1u);
    television::execute(other.get(), "COMMIT");
    const auto names = number(other, "SELECT count(*) FROM named");
    uint8_t volume = 1;
    EXPECT_TRUE(eventually([&] {
        volume = volume % 2 + 1;
        EXPECT_EQ(a_qortvapi_volctrl_setVolume_by_type(VOLCTRL_TYPE_LINE_OUT, volume), TV_OK);
        return log.has("saved again");
    }));
    EXPECT_EQ(log.size(), 2u);
    // At once, not only when the television stops.
    EXPECT_EQ(number(other, "SELECT count(*) FROM favourites"), 2);
    EXPECT_EQ(number(other, "SELECT count(*) FROM named"), names + 3);
    restart();
    EXPECT_EQ(favourites(1, 0), Names{"Première"});
    EXPECT_TRUE(a_qortvapi_volctrl_getMute_by_type(VOLCTRL_TYPE_SPEAKER));
    EXPECT_EQ(a_qortvapi_volctrl_getVolume(), 42);
    EXPECT_EQ(log.count(database()), 2u);
}

TEST_F(TelevisionStore, FolderBelongsToOneTelevisionAtATime) {
    startWithDemo();
    const LogCapture log;
    {
        television::Store second(options.state);
        EXPECT_FALSE(second.works());
        EXPECT_TRUE(
                log.has("process " + std::to_string(getpid()), options.state, "in memory only"));
        EXPECT_EQ(log.size(), 1u);
        second.saveValue("name", "second");
    }
    EXPECT_EQ(
            number(openDatabase(), "SELECT count(*) FROM named WHERE name = CAST('name' AS BLOB)"),
            0);
    EXPECT_FALSE(television::Store(options.state).works()) << "the second one's end frees nothing";
    tv.reset();
    EXPECT_TRUE(television::Store(options.state).works());
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
