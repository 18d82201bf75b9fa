/** A station with a CAM in it, and a client that walks the CAM's menus. */
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support.h"

namespace integration {

using nlohmann::json;

constexpr char kPin[] = "9753";
constexpr char kWrongPin[] = "8642";
constexpr char kPhrase[] = "xyzzy-plugh";  // the answer to a blind enquiry
constexpr char kClef[] = "\xF0\x9D\x84\x9E";

/** As many as a menu holds, almost as long as a text may be, beyond the basic plane. */
inline json manyItems() {
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

inline json description() {
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

inline std::vector<std::string> linesOf(const std::string& text) {
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

}  // namespace integration
