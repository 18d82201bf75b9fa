/** Stream components: six handles that are opened once and shared by all clients. */
#include <functional>

#include "hhandler/hh_scc.h"
#include "middleware/scc.h"
#include "support/core_contexts_fixture.h"

namespace {

constexpr char kTag[] = "hh_sm";

class ServiceComponent : public CoreContextsTest {
  protected:
    using Handle = std::pair<uint32_t, int32_t>;

    ServiceComponent() {
        tv.on<&c_scc_comp_open>([this](const SCC_CMD_T* commands, uint32_t* component) {
            mPlaces.push_back(component);
            onOpen(commands);
            if (openResult == 0) *component = 0x80000000 + static_cast<uint32_t>(mPlaces.size());
            return openResult;
        });
    }
    ~ServiceComponent() override {
        // The table is the process's: the next test finds it as at the start.
        for (uint32_t* place : mPlaces) *place = 0;
    }

    Handle open(uint32_t type, const hidl_string& sink, uint32_t code = 0,
                const hidl_vec<uint8_t>& data = {}) {
        std::vector<Handle> answers;
        impl->a_hidl_c_scc_comp_open(type, sink, code, data, [&](uint32_t handle, int32_t result) {
            answers.emplace_back(handle, result);
        });
        EXPECT_EQ(answers.size(), 1u);
        return answers.at(0);
    }
    size_t opened() const { return mPlaces.size(); }
    /** The lines of an opening, before its answer and behind it. */
    std::vector<Lines> linesOfOpening(uint32_t type, const hidl_string& sink, uint32_t code) {
        return linesAroundAnswer([&](const auto& answered) {
            impl->a_hidl_c_scc_comp_open(type, sink, code, {}, answered);
        });
    }

    int32_t openResult = 0;
    std::function<void(const SCC_CMD_T*)> onOpen = [](const SCC_CMD_T*) {};

  private:
    std::vector<uint32_t*> mPlaces;
};

TEST_F(ServiceComponent, isOpenedWithFourCommands) {
    const hidl_string sink = "snk_SubDisp";
    const hidl_vec<uint8_t> data = {1, 2, 3};
    for (const uint32_t type : {0u, 1u, 2u}) {
        onOpen = [&](const SCC_CMD_T* commands) {
            EXPECT_EQ(commands[0].ui4_code, 0x80000000u);
            EXPECT_EQ(commands[0].ui4_value, type);
            EXPECT_EQ(commands[1].ui4_code, 16u);
            EXPECT_EQ(commands[1].ui4_value, reinterpret_cast<uintptr_t>(sink.c_str()));
            EXPECT_EQ(commands[2].ui4_code, 0xfedcba98u);
            EXPECT_EQ(commands[2].ui4_value, reinterpret_cast<uintptr_t>(data.data()));
            EXPECT_EQ(commands[3].ui4_code, 0u);
            EXPECT_EQ(commands[3].ui4_value, 0u);
        };
        EXPECT_EQ(open(type, sink, 0xfedcba98, data), Handle(0x80000001 + type, 0));
    }
    EXPECT_EQ(opened(), 3u);
}

TEST_F(ServiceComponent, hasAHandleForEachTypeAndSink) {
    for (const uint32_t type : {0u, 1u, 2u}) {
        EXPECT_EQ(open(type, "snk_MainDisp"), Handle(0x80000001 + 2 * type, 0));
        EXPECT_EQ(open(type, "snk_SubDisp"), Handle(0x80000002 + 2 * type, 0));
    }
    EXPECT_EQ(open(1, "snk_MainDisp"), Handle(0x80000003, -1));
    EXPECT_EQ(open(2, "snk_SubDisp"), Handle(0x80000006, -1));
    EXPECT_EQ(opened(), 6u);
}

TEST_F(ServiceComponent, stayingOpenIsSharedAlsoAfterAClose) {
    const Handle first = open(1, "snk_MainDisp");
    EXPECT_EQ(first.second, 0);
    EXPECT_EQ(open(1, "snk_MainDisp"), Handle(first.first, -1));
    switchboard::Switchboard::startRecording();
    EXPECT_EQ(int32_t{impl->a_hidl_c_scc_comp_close(first.first)}, 0);
    EXPECT_EQ(open(1, "snk_MainDisp"), Handle(first.first, -1));
    EXPECT_EQ(switchboard::Switchboard::stopRecording(), std::vector<std::string>{});
}

TEST_F(ServiceComponent, isFoundByTheBeginningOfASink) {
    const Handle main = open(0, "");
    EXPECT_EQ(main.second, 0);
    for (const char* sink : {"s", "snk_", "snk_M", "snk_MainDisp"}) {
        EXPECT_EQ(open(0, sink), Handle(main.first, -1)) << sink;
    }
    const Handle sub = open(0, "snk_S");
    EXPECT_EQ(sub.second, 0);
    EXPECT_NE(sub.first, main.first);
    for (const char* sink : {"snk_Sub", "snk_SubDisp"}) {
        EXPECT_EQ(open(0, sink), Handle(sub.first, -1)) << sink;
    }
}

TEST_F(ServiceComponent, anUnknownTypeOrSinkIsRefusedWithoutALine) {
    EXPECT_EQ(open(3, "snk_MainDisp"), Handle(0, -1));
    EXPECT_EQ(open(0xffffffff, "snk_MainDisp"), Handle(0, -1));
    for (const char* sink : {"snk_MainDisp2", "snk_SubDisp2", "Snk_MainDisp", "snk_X"}) {
        EXPECT_EQ(open(0, sink), Handle(0, -1)) << sink;
    }
    EXPECT_EQ(opened(), 0u);
    EXPECT_EQ(log.take(), std::vector<LogLine>{});
}

TEST_F(ServiceComponent, isTriedAgainWhereItCouldNotBeOpened) {
    openResult = -6;
    for (const uint8_t debug : {uint8_t{1}, uint8_t{0}}) {
        mTvApiDebug = debug;
        EXPECT_EQ(open(2, "snk_Sub", 0x80000000), Handle(0, -6));
        EXPECT_EQ(linesOfOpening(2, "snk_Sub", 0x80000000),
                  (std::vector<Lines>{
                          {debugLine(kTag, "_set_cmd_array", "2, snk_Sub, -2147483648"),
                           debugLine(kTag, "hh_c_scc_comp_open", "Can't Open SCC handle")},
                          {}}));
    }
    openResult = 7;  // whatever is not 0 is a failure
    EXPECT_EQ(open(2, "snk_SubDisp"), Handle(0, 7));
    openResult = 0;
    EXPECT_EQ(open(2, "snk_SubDisp").second, 0);
}

TEST_F(ServiceComponent, openingIsLoggedBeforeTheAnswer) {
    EXPECT_EQ(linesOfOpening(1, "snk_MainDisp", 9),
              (std::vector<Lines>{{debugLine(kTag, "_set_cmd_array", "1, snk_MainDisp, 9"),
                                   debugLine(kTag, "hh_c_scc_comp_open", "-2147483647")},
                                  {}}));
    EXPECT_EQ(linesOfOpening(1, "snk_MainDisp", 9),
              (std::vector<Lines>{
                      {debugLine(kTag, "hh_c_scc_comp_open", "already open. -2147483647")}, {}}));
    mTvApiDebug = 0;
    EXPECT_EQ(linesOfOpening(1, "snk_SubDisp", 9),
              (std::vector<Lines>{{debugLine(kTag, "_set_cmd_array", "1, snk_SubDisp, 9")}, {}}));
    EXPECT_EQ(linesOfOpening(1, "snk_SubDisp", 9), (std::vector<Lines>{{}, {}}));
}

TEST_F(ServiceComponent, closingOnlyLogs) {
    expectDebugLines({debugLine(kTag, "hh_c_scc_comp_close", "-5")},
                     [&] { EXPECT_EQ(int32_t{impl->a_hidl_c_scc_comp_close(0xfffffffb)}, 0); });
}

TEST_F(ServiceComponent, sourceDetectionReportsToTheHandlerWithTheLowWordOfTheTag) {
    tv.on<&c_scc_vid_set_src_detect_nfy>(
            [](uint32_t component, c_scc_src_detect_nfy_fct handler, void* tag) {
                EXPECT_EQ(component, 0xf0000001u);
                EXPECT_EQ(handler, _inps_detect_cb);
                EXPECT_EQ(tag, reinterpret_cast<void*>(uintptr_t{0xf0000005}));
                return -8;
            });
    expectDebugLines({debugLine("QorTvApiImpl(service)", "a_hidl_c_scc_vid_set_src_detect_nfy",
                                "a_hidl_c_scc_vid_set_src_detect_nfy")},
                     [&] {
                         EXPECT_EQ(int32_t{impl->a_hidl_c_scc_vid_set_src_detect_nfy(
                                           0xf0000001, 0xf0000001f0000005)},
                                   -8);
                     });
}

}  // namespace
