// The scripts of the demo and of serving, as a newcomer runs them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "support.h"

namespace integration {
namespace {

constexpr char kDemo[] = QORTV_SOURCE_DIR "/scripts/demo";
constexpr char kServe[] = QORTV_SOURCE_DIR "/scripts/serve";

/** What the scripts find programs and temporary folders by. */
Environment environmentOf(const TemporaryFolder& folder) {
    return {{"QORTV_BUILD", QORTV_BINARY_DIR}, {"TMPDIR", folder.path()}};
}

bool isEmpty(const std::string& folder) {
    return std::filesystem::is_empty(folder);
}

TEST(IntegrationDemo, ShowsEveryStepAndCleansUp) {
    const TemporaryFolder folder;
    const auto demo = run({kDemo}, environmentOf(folder));
    EXPECT_EQ(demo.status, 0) << demo.err << demo.out;
    EXPECT_EQ(demo.err, "");
    for (const char* shown :
         {"\n1. ", "\n2. ", "\n3. ", "\n4. ", "\n5. ", "\n6. ", "\n7. ", "\n8. ", "\n9. ", "\n10. ",
          "recorded 1 Première: 0:03, ", "Kanał Łódź", "scan complete: 40 services",
          "locked: 105 Movies 1", "local time: ", "first: notify", "second: notify", "serviceDied",
          "\nDone"}) {
        EXPECT_NE(demo.out.find(shown), std::string::npos) << shown << " is missing";
    }
    EXPECT_TRUE(isEmpty(folder.path()));
}

TEST(IntegrationDemo, FailsAndShowsTheServicesLogWhenAStepDoesNotHappen) {
    // A service that writes a line and dies in place of the real one.
    const TemporaryFolder folder;
    const TemporaryFolder build;
    for (const std::string program : {QORTVCTL, QORTV_MKSTREAMS}) {
        const std::string name = program.substr(program.rfind('/') + 1);
        writeFile(build / name, "#!/bin/sh\nexec '" + program + "' \"$@\"\n");
    }
    writeFile(build / "qortvapi-service", "#!/bin/sh\necho the tuner is on fire\nexit 9\n");
    for (const auto& entry : std::filesystem::directory_iterator(build.path())) {
        std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_all);
    }
    const auto demo = run({kDemo}, {{"QORTV_BUILD", build.path()}, {"TMPDIR", folder.path()}});
    EXPECT_EQ(demo.status, 1);
    EXPECT_NE(demo.err.find("demo: the service died"), std::string::npos) << demo.err;
    EXPECT_NE(demo.err.find("the tuner is on fire"), std::string::npos) << demo.err;
    EXPECT_EQ(demo.out.find("\n3. "), std::string::npos);
    EXPECT_TRUE(isEmpty(folder.path()));
}

TEST(IntegrationDemo, LeavesNothingBehindWhenItIsInterrupted) {
    const TemporaryFolder folder;
    Process demo({kDemo}, environmentOf(folder));
    ASSERT_TRUE(eventually([&] { return countOf("\n4. ", demo.out()) == 1; }));
    kill(-demo.pid(), SIGINT);
    EXPECT_EQ(demo.wait(), 130);
    EXPECT_TRUE(isEmpty(folder.path()));
    EXPECT_TRUE(eventually([&] { return kill(-demo.pid(), 0) != 0; })) << "processes left";
}

TEST(IntegrationDemo, SaysWhatIsNotBuilt) {
    const TemporaryFolder folder;
    for (const std::string& build : {folder.path(), folder / "missing"}) {
        const auto demo = run({kDemo}, {{"QORTV_BUILD", build}});
        EXPECT_EQ(demo.status, 1);
        EXPECT_EQ(demo.err, "demo: no qortvapi-service in " + build +
                                    "; build it with ./run build release\n");
    }
}

class IntegrationServe : public testing::Test {
  protected:
    IntegrationServe() {
        mEnvironment = environmentOf(mTemporary);
        mEnvironment["QORTV_RUNTIME_DIR"] = mFolder / "run";
        mEnvironment["QORTV_VENDOR_TMP"] = mFolder / "vendor";
        mEnvironment["XDG_STATE_HOME"] = mFolder / "state";
    }

    std::unique_ptr<Process> serve(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), kServe);
        return std::make_unique<Process>(arguments, mEnvironment);
    }

    /** Process id of the service that the `time`-th line about it names. */
    static pid_t servicePid(Process& script, size_t time) {
        constexpr char kUp[] = "serve: the service is up (process ";
        if (!eventually([&] { return countOf(kUp, script.out()) >= time; })) return -1;
        const std::string out = script.out();
        size_t at = 0;
        for (size_t i = 0; i < time; ++i) at = out.find(kUp, at) + sizeof kUp - 1;
        return std::stoi(out.substr(at));
    }

    TemporaryFolder mFolder;
    TemporaryFolder mTemporary;
    Environment mEnvironment;
};

TEST_F(IntegrationServe, RunsAServiceWithDemoStreamsUntilItIsStopped) {
    const auto script = serve();
    const pid_t service = servicePid(*script, 1);
    ASSERT_GT(service, 0) << script->err() << script->out();
    EXPECT_NE(script->out().find("the demo's streams are on the air"), std::string::npos);
    const auto channels = run({QORTVCTL, "channels"}, mEnvironment);
    EXPECT_EQ(channels.status, 0) << channels.err;
    EXPECT_NE(channels.out.find("Kanał Łódź"), std::string::npos);
    const auto recorded = run({QORTVCTL, "record", "Première", "--for", "0.1"}, mEnvironment);
    EXPECT_EQ(recorded.status, 0) << recorded.err;

    script->signal(SIGTERM);
    EXPECT_EQ(script->wait(), 0);
    EXPECT_TRUE(eventually([&] { return kill(service, 0) != 0; }));
    EXPECT_EQ(countOf("died", script->err()), 0U);
    EXPECT_TRUE(isEmpty(mTemporary.path()));
}

TEST_F(IntegrationServe, CtrlCEndsItWithoutARestart) {
    const auto script = serve();
    const pid_t service = servicePid(*script, 1);
    ASSERT_GT(service, 0) << script->err() << script->out();
    kill(-script->pid(), SIGINT);  // a terminal signals the whole group
    EXPECT_EQ(script->wait(), 0);
    EXPECT_TRUE(eventually([&] { return kill(service, 0) != 0; }));
    EXPECT_EQ(countOf("died", script->err()), 0U);
    EXPECT_EQ(countOf("serve: stopped", script->out()), 1U);
    EXPECT_TRUE(isEmpty(mTemporary.path()));
}

TEST_F(IntegrationServe, StartsAServiceThatDiedAgain) {
    const auto script = serve();
    const pid_t first = servicePid(*script, 1);
    ASSERT_GT(first, 0) << script->err() << script->out();
    kill(first, SIGKILL);
    const pid_t second = servicePid(*script, 2);
    ASSERT_GT(second, 0) << script->err() << script->out();
    EXPECT_NE(second, first);
    EXPECT_EQ(countOf("serve: the service died (status 137); starting it again", script->err()),
              1U);
    EXPECT_EQ(run({QORTVCTL, "channels"}, mEnvironment).status, 0);
    script->signal(SIGTERM);
    EXPECT_EQ(script->wait(), 0);
}

TEST_F(IntegrationServe, SaysOnceThatAServiceRunsAlready) {
    const auto first = serve();
    const pid_t service = servicePid(*first, 1);
    ASSERT_GT(service, 0) << first->err() << first->out();
    const auto second = serve();
    EXPECT_EQ(second->wait(), 1);
    EXPECT_EQ(second->err(), "serve: already running as process " + std::to_string(service) + "\n");
    EXPECT_EQ(second->out(), "");
    EXPECT_EQ(kill(service, 0), 0);

    // What a service that was killed leaves behind keeps nobody off.
    kill(first->pid(), SIGKILL);
    kill(service, SIGKILL);
    EXPECT_TRUE(eventually([&] { return kill(service, 0) != 0; }));
    const auto third = serve();
    EXPECT_GT(servicePid(*third, 1), 0) << third->err() << third->out();
    third->signal(SIGTERM);
    EXPECT_EQ(third->wait(), 0);
}

TEST_F(IntegrationServe, KeepsStateAndRecordingsWhereTheyAreSaidToBe) {
    const auto stay = [&](const std::string& state) {
        auto script = serve();
        ASSERT_GT(servicePid(*script, 1), 0) << script->err() << script->out();
        const auto set = run({QORTVCTL, "config", "set", "picture.brightness", "7"}, mEnvironment);
        EXPECT_EQ(set.status, 0) << set.err;
        const auto recorded = run({QORTVCTL, "record", "Première", "--for", "0.1"}, mEnvironment);
        EXPECT_EQ(recorded.status, 0) << recorded.err;
        script->signal(SIGTERM);
        EXPECT_EQ(script->wait(), 0);
        EXPECT_FALSE(isEmpty(state + "/recordings"));

        script = serve();
        ASSERT_GT(servicePid(*script, 1), 0) << script->err() << script->out();
        const auto got = run({QORTVCTL, "config", "get", "picture.brightness"}, mEnvironment);
        EXPECT_NE(got.out.find(" 7"), std::string::npos) << got.out << got.err;
        const auto listed = run({QORTVCTL, "recordings"}, mEnvironment);
        EXPECT_EQ(countOf("Première", listed.out), 1U) << listed.out << listed.err;
        script->signal(SIGTERM);
        EXPECT_EQ(script->wait(), 0);
    };
    stay(mFolder / "state/qortv");
    mEnvironment["QORTV_STATE"] = mFolder / "elsewhere";
    stay(mFolder / "elsewhere");
    EXPECT_TRUE(isEmpty(mTemporary.path()));
}

TEST_F(IntegrationServe, GivesUpOnAServiceThatKeepsDying) {
    const TemporaryFolder build;
    writeFile(build / "qortvapi-service", "#!/bin/sh\nexit 9\n");
    writeFile(build / "qortvctl", "#!/bin/sh\nexit 3\n");
    writeFile(build / "qortv-mkstreams", "#!/bin/sh\nexit 0\n");
    for (const auto& entry : std::filesystem::directory_iterator(build.path())) {
        std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_all);
    }
    mEnvironment["QORTV_BUILD"] = build.path();
    const auto script = serve();
    EXPECT_EQ(script->wait(), 1);
    EXPECT_EQ(countOf("serve: the service died (status 9); starting it again", script->err()), 4U);
    EXPECT_EQ(countOf("giving up", script->err()), 1U) << script->err();
}

TEST_F(IntegrationServe, RefusesWhatItDoesNotKnow) {
    auto script = serve({"--colour"});
    EXPECT_EQ(script->wait(), 2);
    EXPECT_NE(script->err().find("no option '--colour'"), std::string::npos);
    script = serve({"--streams", "/no/such/folder"});
    EXPECT_EQ(script->wait(), 1);
    EXPECT_EQ(script->err(), "serve: no folder of streams: /no/such/folder\n");
    script = serve({"--streams"});
    EXPECT_EQ(script->wait(), 2);
    script = serve({"--help"});
    EXPECT_EQ(script->wait(), 0);
    EXPECT_NE(script->out().find("Usage: ./run serve"), std::string::npos);
}

}  // namespace
}  // namespace integration
