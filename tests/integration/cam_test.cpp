// The CAM over the real socket: qortvctl walks its dialogues while others listen, come, go and die.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <mutex>
#include <string>
#include <variant>
#include <vector>

#include "cam_fixture.h"
#include "middleware/ci.h"
#include "qortv/cam.h"
#include "qortv/subscription.h"

namespace integration {
namespace {

using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_ANS_T;

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

TEST_F(IntegrationCam, OneWithoutAPinIsToldFromOneThatIsLocked) {
    insert({{"name", "Bare"}, {"menu", {{"items", {"Only"}}}}});
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
    ASSERT_TRUE(eventually([&] { return cam.name() == "Bare"; }));
    const auto status = mStation.ctl({"cam", "status", "--json"});
    ASSERT_EQ(status.status, 0) << status.err;
    EXPECT_EQ(json::parse(status.out), (json{{"slot", "ready"},
                                             {"name", "Bare"},
                                             {"id", "0000000000000000"},
                                             {"language", "eng"},
                                             {"profile", ""},
                                             {"pinTries", nullptr}}));
    const auto table = mStation.ctl({"cam", "status"});
    EXPECT_EQ(table.status, 0) << table.err;
    const auto lines = linesOf(table.out);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[1].find(" - "), std::string::npos) << lines[1];
    const auto pin = ctlReading(kPin, {"cam", "pin"});
    EXPECT_EQ(pin.status, 1);
    EXPECT_EQ(pin.out, "");
    EXPECT_EQ(pin.err, "qortvctl: the CAM has no PIN\n");
    const auto walked = ctlReading("", {"cam", "menu"});
    EXPECT_EQ(walked.status, 0) << walked.err;
    EXPECT_EQ(walked.out, "  1  Only\nthe dialogue is over\n");
}

TEST_F(IntegrationCam, WithoutACamEveryCommandSaysSo) {
    ASSERT_EQ(remove(file().c_str()), 0);
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
    ASSERT_TRUE(eventually([&] { return cam.slot() == qortv::CamSlot::kEmpty; }));
    for (const std::vector<std::string>& command : {std::vector<std::string>{"cam"},
                                                    {"cam", "menu"},
                                                    {"cam", "status"},
                                                    {"cam", "pin"},
                                                    {"cam", "remove"}}) {
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
    EXPECT_EQ(inserted.err, "qortvctl: there is no usable cam.json in the folder of streams\n");
}

TEST_F(IntegrationCam, OneWithoutAMenuIsSaidToHaveNone) {
    insert({{"name", "Silent"}});
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
    ASSERT_TRUE(eventually([&] { return cam.name() == "Silent"; }));
    const auto outcome = mStation.ctl({"cam", "menu"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "qortvctl: the CAM has no menu\n");
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

TEST_F(IntegrationCam, AnAnswerWithoutATerminatorEndsWithItsCall) {
    insert({{"name", "Short"},
            {"menu",
             {{"enquiry",
               {{"length", 8},
                {"accept", "abcd"},
                {"then", {{"list", {{"title", "Right"}, {"items", json::array()}}}}}}}}}});
    Hearing hearing;
    qortv::Subscription subscription(hearing);
    const auto proxy = qortv::connect<qortv::Cam::Interface>();
    qortv::Cam cam(proxy);
    ASSERT_TRUE(eventually([&] { return cam.name() == "Short"; }));
    cam.listen();
    cam.openMenu();
    const auto answer = [&](const std::vector<uint16_t>& units) {
        HIDL_CI_MMI_ENQ_ANS_T record;
        record.ui4_id = hearing.all<qortv::CamEnquiry>().back().id;
        record.answer = CI_MMI_ENQ_ANSWERED;
        record.w2s_text = units;
        return qortv::valueOf(proxy->a_hidl_a_qortvapi_ci_set_mmi_enq_ans(
                                      QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS, 0, record),
                              "ci_set_mmi_enq_ans");
    };
    ASSERT_TRUE(hearing.waitFor<qortv::CamEnquiry>(1));
    EXPECT_EQ(answer({'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'}), 0);
    ASSERT_TRUE(hearing.waitFor<qortv::CamList>(1));
    EXPECT_EQ(hearing.all<qortv::CamList>()[0].title, "wrong answer");
    cam.back(hearing.all<qortv::CamList>()[0]);
    ASSERT_TRUE(hearing.waitFor<qortv::CamEnquiry>(2));
    EXPECT_EQ(answer({'a', 'b', 'c', 'd'}), 0);
    ASSERT_TRUE(hearing.waitFor<qortv::CamList>(2));
    EXPECT_EQ(hearing.all<qortv::CamList>()[1].title, "Right");
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

}  // namespace
}  // namespace integration
