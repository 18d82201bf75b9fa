// The CAM over the real socket: qortvctl walks its dialogues while others listen, come, go and die.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h>

#include "middleware/channellist.h"
#include "middleware/records.h"
#include "qortv/cam.h"
#include "qortv/subscription.h"
#include "support.h"

namespace integration {
namespace {

using nlohmann::json;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiChannelList;

constexpr char kPin[] = "9753";
constexpr char kWrongPin[] = "8642";
constexpr char kPhrase[] = "xyzzy-plugh";  // the answer to a blind enquiry
constexpr char kClef[] = "\xF0\x9D\x84\x9E";

/** As many as a menu holds, almost as long as a text may be, beyond the basic plane. */
json manyItems() {
    json items = json::array();
    for (int i = 1; i <= 64; ++i) {
        std::string text = std::to_string(i);
        for (int j = 0; j < 126; ++j) text += kClef;
        items.push_back({{"text", text}});
    }
    return items;
}

// Numbers of the main menu's items.
constexpr char kInfo[] = "1";
constexpr char kAsk[] = "2";
constexpr char kSecret[] = "3";
constexpr char kPinItem[] = "4";
constexpr char kMany[] = "5";
constexpr char kEmpty[] = "6";
constexpr char kUpgrade[] = "7";

json description() {
    return {{"name", std::string("Clef ") + kClef},
            {"id", "00112233445566ff"},
            {"language", "deu"},
            {"profile", "Profil \xC3\xA9"},
            {"pin", kPin},
            {"pinRetries", 3},
            {"firmware", {{"version", 7}, {"seconds", 0.5}}},
            {"menu",
             {{"title", "Main"},
              {"subtitle", ""},
              {"items",
               {{{"text", "Info"}, {"list", {{"title", "About"}, {"items", {"a", kClef}}}}},
                {{"text", "Ask"},
                 {"enquiry", {{"prompt", std::string("Name ") + kClef}, {"length", 8}}}},
                {{"text", "Secret"},
                 {"enquiry",
                  {{"prompt", "Phrase"},
                   {"length", 20},
                   {"blind", true},
                   {"accept", kPhrase},
                   {"then", {{"list", {{"title", "Right"}, {"items", json::array()}}}}}}}},
                {{"text", "PIN"}, {"pin", {{"prompt", "CAM PIN"}}}},
                {{"text", "Many"}, {"menu", {{"items", manyItems()}}}},
                {{"text", "Empty"}, {"menu", {{"title", "Nothing"}, {"items", json::array()}}}},
                {{"text", "Upgrade"}, {"upgrade", true}}}}}}};
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/** qortvctl with a pipe to its standard input; its output is JSON lines. */
class Script {
  public:
    Script(Station& station, const std::vector<std::string>& arguments) {
        const std::string pipe = mFolder / "in";
        if (mkfifo(pipe.c_str(), 0600) != 0) throw std::runtime_error("mkfifo");
        std::vector<std::string> command = {"/bin/bash", "-c", "exec \"$0\" \"$@\" <'" + pipe + "'",
                                            QORTVCTL};
        command.insert(command.end(), arguments.begin(), arguments.end());
        mProcess = std::make_unique<Process>(command, station.environment);
        mInput = open(pipe.c_str(), O_WRONLY | O_CLOEXEC);  // waits for the reader
    }
    ~Script() { end(); }

    void say(const std::string& line) {
        const std::string text = line + "\n";
        ASSERT_EQ(write(mInput, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /** The end of the input. */
    void end() {
        if (mInput >= 0) close(mInput);
        mInput = -1;
    }

    /** The next event, once it has come. */
    json next() {
        const bool came = eventually([&] { return countOf("\n", mProcess->out()) > mHeard; });
        EXPECT_TRUE(came) << mProcess->out() << mProcess->err();
        if (!came) return {};
        return json::parse(linesOf(mProcess->out())[mHeard++]);
    }

    /** The next event is of this kind. */
    json expect(const std::string& event) {
        const json heard = next();
        EXPECT_EQ(heard.value("event", ""), event) << heard;
        return heard;
    }

    Process& process() { return *mProcess; }

  private:
    TemporaryFolder mFolder;
    std::unique_ptr<Process> mProcess;
    int mInput = -1;
    size_t mHeard = 0;
};

/** qortvctl on a terminal of its own. */
class Terminal {
  public:
    Terminal(const Station& station, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), QORTVCTL);
        std::vector<char*> argv;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        station.enter();
        mPid = forkpty(&mMaster, nullptr, nullptr, nullptr);
        if (mPid == 0) {
            execv(QORTVCTL, argv.data());
            _exit(127);
        }
        fcntl(mMaster, F_SETFL, O_NONBLOCK);
    }
    ~Terminal() {
        if (!mEnded) {
            kill(mPid, SIGKILL);
            waitpid(mPid, nullptr, 0);
        }
        close(mMaster);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void type(const std::string& text) {
        ASSERT_EQ(write(mMaster, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /** Everything that was shown. */
    const std::string& shown() {
        char buffer[4096];
        for (ssize_t got; (got = read(mMaster, buffer, sizeof buffer)) > 0;) {
            mShown.append(buffer, static_cast<size_t>(got));
        }
        return mShown;
    }

    bool waitFor(const std::string& text, size_t times = 1) {
        return eventually([&] { return countOf(text, shown()) >= times; });
    }

    bool echoes() const {
        termios state = {};
        EXPECT_EQ(tcgetattr(mMaster, &state), 0);
        return (state.c_lflag & ECHO) != 0;
    }

    void signal(int number) const { kill(mPid, number); }

    int wait() {
        int status = 0;
        mEnded = eventually([&] {
            shown();
            return waitpid(mPid, &status, WNOHANG) == mPid;
        });
        EXPECT_TRUE(mEnded) << shown();
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

  private:
    pid_t mPid = -1;
    int mMaster = -1;
    bool mEnded = false;
    std::string mShown;
};

/** What this process hears of the module. */
class Hearing : public qortv::CamListener {
  public:
    void onCamEvent(const qortv::CamEvent& event) override {
        const std::lock_guard lock(mMutex);
        mEvents.push_back(event);
    }

    /** The events of one kind so far. */
    template <typename T>
    std::vector<T> all() {
        const std::lock_guard lock(mMutex);
        std::vector<T> found;
        for (const auto& event : mEvents) {
            if (const T* one = std::get_if<T>(&event)) found.push_back(*one);
        }
        return found;
    }

    template <typename T>
    bool waitFor(size_t times) {
        return eventually([&] { return all<T>().size() >= times; });
    }

  private:
    std::mutex mMutex;
    std::vector<qortv::CamEvent> mEvents;
};

class IntegrationCam : public testing::Test {
  protected:
    void SetUp() override {
        mStation.environment["QORTV_DEBUG"] = "1";
        insert();
        mStation.startAndWait();
        mStation.enter();
    }

    std::string file() const { return mStation.streams() + "/cam.json"; }

    /** Puts the file into the folder, all of it at once. */
    void insert(const json& card = description()) {
        const std::string made = mStation.vendorFolder() + "/cam";
        writeFile(made, card.dump());
        ASSERT_EQ(rename(made.c_str(), file().c_str()), 0);
    }

    std::unique_ptr<Script> menu() {
        return std::make_unique<Script>(mStation, std::vector<std::string>{"cam", "--json"});
    }

    std::unique_ptr<Process> listener() {
        auto watch = mStation.startCtl({"watch", "--json"});
        EXPECT_TRUE(eventually([&] { return countOf("listening", watch->err()) == 1; }));
        return watch;
    }

    /** Runs qortvctl with lines on its standard input. */
    Outcome ctlReading(const std::string& lines, std::vector<std::string> arguments) {
        Script script(mStation, arguments);
        if (!lines.empty()) script.say(lines);
        script.end();
        const int status = script.process().wait();
        return {status, script.process().out(), script.process().err()};
    }

    /** The module's dialogue as a process that watches heard it: `condition id`, or `condition`. */
    static std::vector<std::string> dialogueOf(Process& watch) {
        std::vector<std::string> heard;
        for (const auto& line : linesOf(watch.out())) {
            const json notification = json::parse(line);
            const json& fields = notification["fields"];
            const std::string method = notification["notification"];
            if (method.rfind("notifyCi", 0) != 0 || fields["condition"] == 0) continue;
            heard.push_back(fields["condition"].dump() +
                            (fields.contains("id") ? " " + fields["id"].dump() : ""));
        }
        return heard;
    }

    Station mStation;
};

TEST(IntegrationCamUsage, EveryCommandHasHelpAndNeedsAService) {
    Station station;
    for (const std::vector<std::string>& command : {std::vector<std::string>{"cam"},
                                                    {"cam", "menu"},
                                                    {"cam", "status"},
                                                    {"cam", "pin"},
                                                    {"cam", "insert"},
                                                    {"cam", "remove"}}) {
        auto arguments = command;
        arguments.emplace_back("--help");
        const auto help = station.ctl(arguments);
        EXPECT_EQ(help.status, 0) << command.back();
        EXPECT_NE(help.out.find("Example"), std::string::npos) << help.out;
        arguments.back() = "--timeout=0";
        const auto outcome = station.ctl(arguments);
        EXPECT_EQ(outcome.status, 3) << command.back();
        EXPECT_EQ(outcome.out, "");
    }
    EXPECT_EQ(station.ctl({"cam", "tune"}).status, 2);
    EXPECT_EQ(station.ctl({"cam", "menu", "1"}).status, 2);
}

TEST_F(IntegrationCam, StatusTellsWhatItIs) {
    const auto outcome = mStation.ctl({"cam", "status", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(json::parse(outcome.out), (json{{"slot", "ready"},
                                              {"name", std::string("Clef ") + kClef},
                                              {"id", "00112233445566ff"},
                                              {"language", "deu"},
                                              {"profile", "Profil \xC3\xA9"},
                                              {"pinTries", 3}}));
    const auto table = mStation.ctl({"cam", "status"});
    EXPECT_EQ(table.status, 0);
    const auto lines = linesOf(table.out);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].rfind("NAME ", 0), 0U);
    EXPECT_NE(lines[1].find("00112233445566ff"), std::string::npos);
}

TEST_F(IntegrationCam, WithoutACamEveryCommandSaysSo) {
    ASSERT_EQ(remove(file().c_str()), 0);
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
    ASSERT_TRUE(eventually([&] { return cam.slot() == qortv::CamSlot::kEmpty; }));
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"cam"}, {"cam", "menu"}, {"cam", "status"}, {"cam", "pin"}}) {
        const auto outcome = mStation.ctl(command);
        EXPECT_EQ(outcome.status, 1) << command.back();
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "qortvctl: there is no CAM in the slot\n");
    }
    const auto status = mStation.ctl({"cam", "status", "--json"});
    EXPECT_EQ(status.status, 1);
    EXPECT_EQ(status.out, "{\"slot\":\"empty\"}\n");
    const auto inserted = mStation.ctl({"cam", "insert"});
    EXPECT_EQ(inserted.status, 1);
    EXPECT_EQ(inserted.err, "qortvctl: the television refused to insert the CAM (code -2)\n");
}

TEST_F(IntegrationCam, AllHearTheWholeDialogueInOneOrderAndOneMayDie) {
    const auto second = listener();
    const auto third = listener();
    const auto script = menu();

    const json main = script->expect("menu");
    EXPECT_EQ(main["title"], "Main");
    EXPECT_EQ(main["subtitle"], "");
    EXPECT_TRUE(main["bottom"].is_null());
    EXPECT_EQ(main["items"].size(), 7U);
    script->say(kInfo);
    const json info = script->expect("list");
    EXPECT_EQ(info["title"], "About");
    EXPECT_EQ(info["items"], (json{"a", kClef}));
    script->say("");
    script->expect("menu");

    script->say(kAsk);
    const json ask = script->expect("enquiry");
    EXPECT_EQ(ask["text"], std::string("Name ") + kClef);
    EXPECT_EQ(ask["answerLength"], 8);
    EXPECT_EQ(ask["blind"], false);
    third->signal(SIGKILL);
    ASSERT_TRUE(mStation.waitForLog("> serviceDied "));
    script->say(std::string("J\xC3\xA9") + kClef);
    script->expect("menu");

    script->say(kSecret);
    EXPECT_EQ(script->expect("enquiry")["blind"], true);
    script->say("no such phrase");
    EXPECT_EQ(script->expect("list")["title"], "wrong answer");
    script->say("");
    script->expect("enquiry");
    script->say(kPhrase);
    EXPECT_EQ(script->expect("list")["title"], "Right");
    script->say("b");
    script->expect("menu");

    script->say(kPinItem);
    EXPECT_EQ(script->expect("enquiry")["text"], "CAM PIN");
    script->say(kWrongPin);
    EXPECT_EQ(script->expect("list")["title"], "wrong PIN, 2 tries left");
    script->say("");
    script->expect("enquiry");
    script->say(kPin);
    EXPECT_EQ(script->expect("list")["title"], "PIN correct");
    script->say("");
    script->expect("menu");
    script->say("q");
    EXPECT_EQ(script->expect("closed")["by"], "host");
    EXPECT_EQ(script->process().wait(), 0);
    EXPECT_EQ(script->process().err(), "");

    std::vector<std::string> said;
    for (const auto& line : linesOf(script->process().out())) {
        const json event = json::parse(line);
        if (event["event"] == "closed") {
            said.emplace_back("6");
        } else {
            const char* condition = event["event"] == "enquiry" ? "3 "
                                    : event["event"] == "menu"  ? "4 "
                                                                : "5 ";
            said.push_back(condition + event["id"].dump());
        }
    }
    EXPECT_EQ(said.size(), 16U);
    ASSERT_TRUE(eventually([&] { return dialogueOf(*second).size() >= said.size(); }));
    EXPECT_EQ(dialogueOf(*second), said);
    EXPECT_TRUE(second->running());
    EXPECT_EQ(third->wait(), 128 + SIGKILL);
}

TEST_F(IntegrationCam, BackFromTheMainMenuEndsTheDialogue) {
    const auto script = menu();
    script->expect("menu");
    script->say("");
    EXPECT_EQ(script->expect("closed")["by"], "module");
    EXPECT_EQ(script->process().wait(), 0);
}

TEST_F(IntegrationCam, ManyItemsNoItemsAndMissingTextsArrive) {
    const auto script = menu();
    script->expect("menu");
    script->say(kMany);
    const json many = script->expect("menu");
    EXPECT_TRUE(many["title"].is_null());
    EXPECT_TRUE(many["subtitle"].is_null());
    ASSERT_EQ(many["items"].size(), 64U);
    const json sent = manyItems();
    for (size_t i = 0; i < 64; ++i) EXPECT_EQ(many["items"][i], sent[i]["text"]) << i;
    script->say("64");  // does nothing: the menu once more
    EXPECT_GT(script->expect("menu")["id"], many["id"]);
    script->say("");
    script->expect("menu");
    script->say(kEmpty);
    const json empty = script->expect("menu");
    EXPECT_EQ(empty["title"], "Nothing");
    EXPECT_EQ(empty["items"], json::array());
    script->say("1");
    EXPECT_EQ(script->expect("error")["message"], "there is nothing to choose from");
    script->end();
    EXPECT_EQ(script->expect("closed")["by"], "host");
    EXPECT_EQ(script->process().wait(), 0);
}

TEST_F(IntegrationCam, MistakesAreToldAndMayBeMadeGood) {
    const auto script = menu();
    script->expect("menu");
    script->say("8");
    EXPECT_EQ(script->expect("error")["message"], "the items are 1 to 7, not 8");
    script->say("one");
    EXPECT_EQ(script->expect("error")["message"], "a number, an empty line or q is needed");
    script->say("257");
    EXPECT_EQ(script->expect("error")["message"], "a number, an empty line or q is needed");
    script->say(kInfo);
    script->expect("list");
    script->say("1");
    EXPECT_EQ(script->expect("error")["message"],
              "there is nothing to choose: an empty line or q is needed");
    script->say("b");
    script->expect("menu");
    script->say(kPinItem);
    script->expect("enquiry");
    script->say("97531");
    EXPECT_EQ(script->expect("error")["message"],
              "the answer is longer than the 4 characters that the CAM asks for");
    script->say("");
    script->expect("menu");
    script->end();
    script->expect("closed");
    EXPECT_EQ(script->process().wait(), 0);
}

TEST_F(IntegrationCam, AFileOfAnswersIsReadInStep) {
    const auto outcome = ctlReading("1\n\n2\nJo\nq", {"cam", "menu"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    const std::string mainMenu =
            "Main\n  1  Info\n  2  Ask\n  3  Secret\n  4  PIN\n  5  Many\n  6  Empty\n  7  "
            "Upgrade\n";
    EXPECT_EQ(outcome.out, mainMenu + "About\n  a\n  " + kClef + "\n" + mainMenu + "Name " + kClef +
                                   "\n" + mainMenu + "the dialogue is over\n");
    const auto nothing = mStation.ctl({"cam"});  // standard input is empty
    EXPECT_EQ(nothing.status, 0);
    EXPECT_EQ(nothing.out, mainMenu + "the dialogue is over\n");
}

TEST_F(IntegrationCam, AnUpgradeIsFollowedToItsEnd) {
    const auto script = menu();
    script->expect("menu");
    script->say(kUpgrade);
    EXPECT_EQ(script->expect("closed")["by"], "module");
    EXPECT_EQ(script->expect("upgrade")["version"], 7);
    int percent = 0;
    while (percent < 100) {
        const json progress = script->expect("upgradeProgress");
        if (!progress.contains("percent")) break;
        EXPECT_GT(progress["percent"], percent);
        percent = progress["percent"];
    }
    EXPECT_EQ(percent, 100);
    EXPECT_EQ(script->process().wait(), 0);
}

TEST_F(IntegrationCam, ThePinIsTakenFromStandardInputOnly) {
    auto outcome = ctlReading(kWrongPin, {"cam", "pin"});
    EXPECT_EQ(outcome.status, 4) << outcome.err;
    EXPECT_EQ(outcome.out, "PIN wrong\n");
    outcome = ctlReading(kPin, {"cam", "pin", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "{\"pin\":\"right\"}\n");
    outcome = ctlReading("", {"cam", "pin"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: standard input holds no PIN\n");
    outcome = ctlReading("97x3", {"cam", "pin"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: a PIN has digits and nothing else\n");
    EXPECT_EQ(mStation.ctl({"cam", "pin", kPin}).status, 2);
    for (const int status : {4, 4, 5, 5}) {
        EXPECT_EQ(ctlReading(kWrongPin, {"cam", "pin"}).status, status);
    }
    outcome = ctlReading(kPin, {"cam", "pin"});
    EXPECT_EQ(outcome.status, 5) << "the right one does not unlock it";
    EXPECT_EQ(outcome.out, "PIN locked\n");
    EXPECT_EQ(json::parse(mStation.ctl({"cam", "status", "--json"}).out)["pinTries"], 0);
}

TEST_F(IntegrationCam, InsertingAndRemovingIsHeard) {
    Hearing hearing;
    qortv::Subscription subscription(hearing);
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
    cam.listen();
    ASSERT_TRUE(hearing.waitFor<qortv::CamCard>(1)) << "it is told of on registration";
    EXPECT_EQ(mStation.ctl({"cam", "remove"}).out, "removed\n");
    ASSERT_TRUE(hearing.waitFor<qortv::CamCard>(2));
    EXPECT_EQ(mStation.ctl({"cam", "status"}).status, 1);
    EXPECT_EQ(mStation.ctl({"cam", "insert", "--json"}).out, "{\"inserted\":true}\n");
    ASSERT_TRUE(hearing.waitFor<qortv::CamCard>(3));
    ASSERT_EQ(remove(file().c_str()), 0);
    ASSERT_TRUE(hearing.waitFor<qortv::CamCard>(4));
    json other = description();
    other["name"] = "Other";
    insert(other);
    ASSERT_TRUE(hearing.waitFor<qortv::CamCard>(5));
    EXPECT_EQ(cam.name(), "Other");
    std::string states;
    for (const auto& card : hearing.all<qortv::CamCard>()) states += card.inserted ? '1' : '0';
    EXPECT_EQ(states, "10101");
}

TEST_F(IntegrationCam, RemovalBreaksTheDialogueOff) {
    const auto script = menu();
    script->expect("menu");
    script->say(kPinItem);
    script->expect("enquiry");
    EXPECT_EQ(mStation.ctl({"cam", "remove"}).status, 0);
    EXPECT_EQ(script->expect("closed")["by"], "removal");
    EXPECT_EQ(script->process().wait(), 1);
    EXPECT_EQ(script->process().err(), "");
}

TEST_F(IntegrationCam, AClientKilledInItsDialogueLeavesTheCamToTheNext) {
    const auto victim = menu();
    victim->expect("menu");
    victim->say(kPinItem);
    victim->expect("enquiry");
    victim->process().signal(SIGKILL);
    ASSERT_TRUE(mStation.waitForLog("> serviceDied "));
    const auto next = menu();
    next->expect("menu");
    next->say("");
    EXPECT_EQ(next->expect("closed")["by"], "module");
    EXPECT_EQ(next->process().wait(), 0);
}

TEST_F(IntegrationCam, WhatAnotherClientDoesIsFollowed) {
    const auto first = menu();
    first->expect("menu");
    const auto second = menu();
    second->expect("menu");
    const json reopened = first->expect("menu");
    second->say(kInfo);
    second->expect("list");
    first->expect("list");
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
    qortv::CamMenu stale;
    stale.id = reopened["id"];
    EXPECT_THROW(cam.back(stale), qortv::Error);
    first->say("");
    first->expect("menu");
    second->expect("menu");
    second->say("q");
    second->expect("closed");
    first->expect("closed");
    EXPECT_EQ(first->process().wait(), 0);
    EXPECT_EQ(second->process().wait(), 0);
}

TEST_F(IntegrationCam, TheServicesDeathEndsTheDialogue) {
    const auto script = menu();
    script->expect("menu");
    mStation.service().signal(SIGKILL);
    EXPECT_EQ(script->process().wait(), 1);
    EXPECT_EQ(script->process().err(), "qortvctl: the service went away\n");
}

TEST_F(IntegrationCam, ASignalClosesTheDialogue) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        const auto script = menu();
        script->expect("menu");
        script->process().signal(number);
        EXPECT_EQ(script->expect("closed")["by"], "host") << number;
        EXPECT_EQ(script->process().wait(), 0) << number;
    }
}

TEST_F(IntegrationCam, ATerminalShowsPromptsAndNoBlindAnswer) {
    Terminal terminal(mStation, {"cam"});
    ASSERT_TRUE(terminal.waitFor("Number, Enter: back, q: close> ")) << terminal.shown();
    EXPECT_TRUE(terminal.echoes());
    terminal.type(std::string(kAsk) + "\n");
    ASSERT_TRUE(terminal.waitFor("Up to 8 characters, Enter: back> ")) << terminal.shown();
    EXPECT_TRUE(terminal.echoes());
    terminal.type("Jo\n");
    ASSERT_TRUE(terminal.waitFor("Number, Enter: back, q: close> ", 2)) << terminal.shown();
    EXPECT_EQ(countOf("Jo", terminal.shown()), 1U);
    terminal.type(std::string(kPinItem) + "\n");
    ASSERT_TRUE(terminal.waitFor("Up to 4 characters, not shown, Enter: back> "))
            << terminal.shown();
    EXPECT_FALSE(terminal.echoes());
    terminal.type(std::string(kPin) + "\n");
    ASSERT_TRUE(terminal.waitFor("PIN correct")) << terminal.shown();
    ASSERT_TRUE(terminal.waitFor("Enter: back, q: close> ", 3)) << terminal.shown();
    EXPECT_TRUE(terminal.echoes());
    terminal.type("q\n");
    EXPECT_EQ(terminal.wait(), 0);
    EXPECT_EQ(countOf(kPin, terminal.shown()), 0U) << terminal.shown();
}

TEST_F(IntegrationCam, HoweverItEndsTheTerminalShowsWhatIsTypedAgain) {
    const auto expectEnd = [&](int status, const std::function<void(Terminal&)>& end) {
        Terminal terminal(mStation, {"cam"});
        ASSERT_TRUE(terminal.waitFor("q: close> ")) << terminal.shown();
        terminal.type(std::string(kPinItem) + "\n");
        ASSERT_TRUE(terminal.waitFor("not shown")) << terminal.shown();
        ASSERT_FALSE(terminal.echoes());
        end(terminal);
        EXPECT_EQ(terminal.wait(), status) << terminal.shown();
        EXPECT_TRUE(terminal.echoes());
    };
    for (const char* key : {"\x03", "\x1C", "\x04"}) {  // Ctrl-C, Ctrl-\, Ctrl-D
        expectEnd(0, [&](Terminal& terminal) { terminal.type(key); });
    }
    expectEnd(0, [](Terminal& terminal) { terminal.signal(SIGTERM); });
    expectEnd(1, [&](Terminal&) { EXPECT_EQ(mStation.ctl({"cam", "remove"}).status, 0); });
    EXPECT_EQ(mStation.ctl({"cam", "insert"}).status, 0);
    expectEnd(1, [&](Terminal&) { mStation.service().signal(SIGKILL); });
}

TEST_F(IntegrationCam, ThePinPromptOnATerminalShowsNothing) {
    Terminal terminal(mStation, {"cam", "pin"});
    ASSERT_TRUE(terminal.waitFor("PIN (not shown): ")) << terminal.shown();
    EXPECT_FALSE(terminal.echoes());
    terminal.type(std::string(kPin) + "\n");
    EXPECT_EQ(terminal.wait(), 0);
    EXPECT_TRUE(terminal.echoes());
    EXPECT_EQ(countOf(kPin, terminal.shown()), 0U) << terminal.shown();
    Terminal interrupted(mStation, {"cam", "pin"});
    ASSERT_TRUE(interrupted.waitFor("PIN (not shown): "));
    interrupted.type("\x03");
    EXPECT_EQ(interrupted.wait(), 1);
    EXPECT_TRUE(interrupted.echoes());
}

// Secrets.

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : separator) + part;
    return text;
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/** The ways in which bytes may be written into a log, in lower case, and the bytes themselves. */
std::vector<std::string> spellings(const std::vector<uint8_t>& bytes) {
    std::vector<std::string> hex;
    std::vector<std::string> prefixed;
    std::vector<std::string> decimal;
    for (const uint8_t byte : bytes) {
        char text[8];
        std::snprintf(text, sizeof text, "%02x", byte);
        hex.emplace_back(text);
        prefixed.push_back("0x" + hex.back());
        decimal.push_back(std::to_string(byte));
    }
    std::vector<std::string> all = {std::string(bytes.begin(), bytes.end()), joined(hex, ""),
                                    joined({hex.rbegin(), hex.rend()}, "")};
    for (const char* separator : {" ", ":", "-", ",", ", "}) {
        all.push_back(joined(hex, separator));
        all.push_back(joined(prefixed, separator));
        all.push_back(joined(decimal, separator));
    }
    return all;
}

/** Every four neighbours among `bytes`, in all spellings. */
std::vector<std::string> spellingsOfParts(const std::vector<uint8_t>& bytes) {
    std::vector<std::string> all;
    for (size_t i = 0; i + 4 <= bytes.size(); ++i) {
        const std::vector<uint8_t> part(bytes.begin() + static_cast<long>(i),
                                        bytes.begin() + static_cast<long>(i) + 4);
        const auto some = spellings(part);
        all.insert(all.end(), some.begin(), some.end());
        uint32_t number = 0;
        std::memcpy(&number, part.data(), sizeof number);
        all.push_back(std::to_string(number));
        all.push_back(std::to_string(__builtin_bswap32(number)));
    }
    return all;
}

/** A text in all spellings, as its characters and as UTF-16. */
std::vector<std::string> spellingsOfText(const std::string& text) {
    std::vector<uint8_t> wide;
    for (const char c : text) wide.insert(wide.end(), {static_cast<uint8_t>(c), 0});
    auto all = spellings({text.begin(), text.end()});
    const auto more = spellings(wide);
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

/** Whether `secret` stands in `text`; four digits only where they are a number of their own. */
bool standsIn(const std::string& secret, const std::string& text) {
    const auto isDigit = [&](size_t at) { return at < text.size() && std::isdigit(text[at]) != 0; };
    const bool isShort =
            secret.size() == 4 && std::all_of(secret.begin(), secret.end(),
                                              [](unsigned char c) { return std::isdigit(c) != 0; });
    for (size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at + 1)) {
        if (!isShort || !(isDigit(at - 1) || isDigit(at + secret.size()))) return true;
    }
    return false;
}

/** The first of `secrets` that stands in `text`, raw or whatever the letter case. */
std::string found(const std::vector<std::string>& secrets, const std::string& text) {
    const std::string lowered = lower(text);
    for (const auto& secret : secrets) {
        if (standsIn(secret, text) || standsIn(secret, lowered)) return secret;
    }
    return "";
}

/** What stands behind date, process and tag in a line of the service's log. */
std::string messageOf(const std::string& line) {
    const size_t colon = line.find(": ");
    return colon == std::string::npos ? line : line.substr(colon + 2);
}

/** A debug line that tells one unit of an answer or of the PIN, as the service is meant to. */
bool tellsAUnit(const std::string& line) {
    constexpr char kUnit[] = "t_enq_ans[";
    const size_t at = line.find(kUnit);
    if (at == std::string::npos) return false;
    const std::string rest = line.substr(at + std::strlen(kUnit));
    return rest.find_first_not_of("0123456789]:") == std::string::npos;
}

TEST(IntegrationCamSecrets, TheSearchFindsEverySpelling) {
    const std::vector<uint8_t> bytes = {0xA7, 0x5C, 0xE9, 0x3B, 0xD1};
    const auto parts = spellingsOfParts(bytes);
    for (const char* text : {"key A75CE93B", "a7 5c e9 3b d1", "xx 5c:e9:3b:d1",
                             "{0xA7, 0x5C, 0xE9, 0x3B}", "167,92,233,59", "92 233 59 209",
                             "3be95ca7", "1005149351", "2807884091", "\xA7\x5C\xE9\x3B"}) {
        EXPECT_NE(found(parts, text), "") << text;
    }
    EXPECT_EQ(found(spellingsOfText(kPin), "1795297530"), "");
    EXPECT_EQ(found(parts, "a7 5c e9 xx 3b d1 167"), "");
    for (const char* text : {"pin=9753", "39373533", "39 37 35 33", "57 55 53 51",
                             "3900370035003300", "0033003500370039"}) {
        EXPECT_NE(found(spellingsOfText(kPin), text), "") << text;
    }
    EXPECT_NE(found(spellingsOfText(kPin), std::string("9\0007\0005\0003\0", 8)), "");
}

TEST_F(IntegrationCam, NoSecretIsWrittenAnywhereElse) {
    const auto watch = listener();
    const auto script = menu();
    script->expect("menu");
    script->say(kSecret);
    script->expect("enquiry");
    script->say(kPhrase);
    script->expect("list");
    script->say("");
    script->expect("menu");
    script->say(kPinItem);
    script->expect("enquiry");
    script->say(kPin);
    EXPECT_EQ(script->expect("list")["title"], "PIN correct");
    script->end();
    script->expect("closed");
    EXPECT_EQ(script->process().wait(), 0);
    const auto pin = ctlReading(kPin, {"cam", "pin"});
    EXPECT_EQ(pin.status, 0);
    const auto malformed = ctlReading(std::string(kPin) + "x", {"cam", "pin"});
    EXPECT_EQ(malformed.status, 1);

    const std::vector<uint8_t> key = {0xA7, 0x5C, 0xE9, 0x3B, 0xD1, 0x68, 0xF2, 0x94};
    BSL_REC_T record = {};
    record.t_header.ui4_frequency_khz = 11000000;
    record.ui1_key_length = sizeof record.aui1_key;
    std::copy(key.begin(), key.end(), record.aui1_key);
    std::vector<uint8_t> image(sizeof record);
    std::memcpy(image.data(), &record, sizeof record);
    const auto lists = qortv::connect<IQorTvApiChannelList>();
    uint32_t handle = 0;
    uint32_t id = 0;
    int32_t result = -1;
    qortv::check(lists->a_hidl_a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(
                         BSL_ID_MAIN, [&](uint32_t list, int32_t) { handle = list; }),
                 "get_bsl_handle_by_bsl_id");
    qortv::check(
            lists->a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(handle, BISSKEY_ADD, image,
                                                              [&](uint32_t written, int32_t code) {
                                                                  id = written;
                                                                  result = code;
                                                              }),
            "set_bsl_rec_info");
    ASSERT_EQ(result, 0);
    std::vector<uint8_t> stored;
    qortv::check(lists->a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id(
                         handle, static_cast<uint16_t>(id),
                         [&](const auto& bytes, uint32_t, int32_t) { stored = bytes; }),
                 "get_bsl_rec_by_bsl_rec_id");
    ASSERT_EQ(stored.size(), sizeof record);
    EXPECT_EQ(std::memcmp(stored.data() + offsetof(BSL_REC_T, aui1_key), key.data(), key.size()),
              0);
    ASSERT_TRUE(eventually([&] { return countOf("notifyBisskeyUpdate", watch->out()) > 0; }));

    size_t units = 0;
    std::string log;
    for (const auto& line : linesOf(mStation.log())) {
        if (tellsAUnit(line)) {
            ++units;
        } else {
            log += messageOf(line) + "\n";
        }
    }
    EXPECT_EQ(units, std::strlen(kPhrase) + std::strlen(kPin)) << "the service was not debugged";
    EXPECT_GT(countOf("a_hidl_a_qortvapi_bisskey_set_bsl_rec_info", log), 0U);
    const std::map<std::string, std::string> written = {
            {"the service's log", log},
            {"the dialogue's output", script->process().out() + script->process().err()},
            {"the listener's output", watch->out() + watch->err()},
            {"the output of pin", pin.out + pin.err + malformed.out + malformed.err}};
    for (const auto& [where, text] : written) {
        EXPECT_EQ(found(spellingsOfParts(key), text), "") << where;
        EXPECT_EQ(found(spellingsOfText(kPhrase), text), "") << where;
        EXPECT_EQ(found(spellingsOfText(kPin), text), "") << where;
    }
}

}  // namespace
}  // namespace integration
