/** Devices of the input and output manager, whose data travel in a client's shared region. */
#include <cstring>

#include "hhandler/hh_iom.h"
#include "middleware/iom.h"
#include "support/core_contexts_fixture.h"
#include "support/fake_ion.h"

namespace {

using Events = std::vector<std::string>;

class ServiceIom : public CoreContextsTest {
  protected:
    ServiceIom() { gIon = FakeIon(); }

    static Events take() { return std::exchange(gIon.events, {}); }
    auto noteAnswer() {
        return [](uint64_t value, int32_t result) {
            noteEvent("answer " + std::to_string(value) + " " + std::to_string(result));
        };
    }
    /** Neither the methods nor their handlers write a line. */
    void expectSilence() {
        for (const LogLine& line : log.take()) {
            EXPECT_EQ(line.tag, "QorTvApiChannelListImpl(service)") << "the region's own";
        }
    }

    const SharedBuffer buffer{4096};
};

Events mapped(const Events& between) {
    Events events = {"open 1", "import 1"};
    events.insert(events.end(), between.begin(), between.end());
    return events;
}

TEST_F(ServiceIom, opensADeviceWithTheSettingsInTheRegion) {
    const hidl_string name = "/dev/ttyS1";
    tv.on<&c_iom_open_uart>([&](uint16_t device, uint16_t port, const char* its_name, void* setting,
                                void* tag, c_iom_nfy_fct handler, uint32_t* iom) {
        noteEvent("middleware");
        EXPECT_EQ(device, 0xf001);
        EXPECT_EQ(port, 0xf002);
        EXPECT_EQ(its_name, name.c_str());
        EXPECT_EQ(static_cast<uint8_t*>(setting)[15], 0xee);
        static_cast<uint8_t*>(setting)[15] = 0x15;
        EXPECT_EQ(tag, reinterpret_cast<void*>(uintptr_t{0xf0000005}));
        EXPECT_EQ(handler, _iom_nfy_fct);
        EXPECT_EQ(*iom, 0u);
        *iom = 0xf1f2f3f4;
        return -3;
    });
    impl->a_hidl_c_iom_open(0xf001, 0xf002, name, buffer.handle(), 0xf0000001f0000005,
                            noteAnswer());
    EXPECT_EQ(take(), mapped({"middleware", "close 1", "answer 4059231220 -3"}));
    EXPECT_EQ(buffer.bytes()[15], 0x15) << "what the middleware wrote is the client's";
    expectSilence();
}

TEST_F(ServiceIom, opensForAClientThatDoesNotAskForTheHandle) {
    int calls = 0;
    tv.on<&c_iom_open_uart>([&](auto...) {
        ++calls;
        return 0;
    });
    impl->a_hidl_c_iom_open(1, 2, "", buffer.handle(), 0, nullptr);
    EXPECT_EQ(calls, 1);
}

TEST_F(ServiceIom, opensWithSixteenBytes) {
    tv.on<&c_iom_open_uart>([](auto...) { return 0; });
    const SharedBuffer enough(16);
    impl->a_hidl_c_iom_open(1, 2, "", enough.handle(), 0, noteAnswer());
    EXPECT_EQ(take(), mapped({"close 1", "answer 0 0"}));
}

TEST_F(ServiceIom, readsIntoTheRegionAndAnswersTheSizeReported) {
    tv.on<&c_iom_get>([](uint32_t iom, uint16_t type, void* data, uint32_t* size) {
        noteEvent("middleware");
        EXPECT_EQ(iom, 0xf0000001u);
        EXPECT_EQ(type, 0xf002);
        EXPECT_EQ(*size, 4096u) << "the low word";
        memset(data, 0x44, *size);
        *size = 0xf0000003;
        return -3;
    });
    impl->a_hidl_c_iom_get(0xf0000001, 0xf002, buffer.handle(), 0xf000000000001000, noteAnswer());
    EXPECT_EQ(take(), mapped({"middleware", "close 1", "answer 4026531843 -3"}));
    EXPECT_EQ(buffer.bytes(), std::vector<uint8_t>(4096, 0x44));
    expectSilence();
}

TEST_F(ServiceIom, writesFromTheRegion) {
    tv.on<&c_iom_set>([](uint32_t iom, uint16_t type, const void* data, uint32_t size) {
        noteEvent("middleware");
        EXPECT_EQ(iom, 0xf0000001u);
        EXPECT_EQ(type, 0xf002);
        EXPECT_EQ(static_cast<const uint8_t*>(data)[4095], 0xee);
        EXPECT_EQ(size, 4096u) << "the low word";
        return -3;
    });
    EXPECT_EQ(int32_t{impl->a_hidl_c_iom_set(0xf0000001, 0xf002, buffer.handle(),
                                             0xf000000000001000)},
              -3);
    EXPECT_EQ(take(), mapped({"middleware", "close 1"}));
    expectSilence();
}

/** Handles without a descriptor, and a device that does not open: all that is mapped is nothing. */
TEST_F(ServiceIom, aRegionThatIsNoneNeverReachesTheMiddleware) {
    native_handle_t* empty = native_handle_create(0, 0);
    struct {
        hidl_handle region;
        int failing_open;
    } const rows[] = {{hidl_handle(), 0}, {hidl_handle(empty), 0}, {buffer.handle(), 1}};
    for (const auto& row : rows) {
        const auto again = [&] {
            gIon = FakeIon();
            gIon.failing_open = row.failing_open;
        };
        switchboard::Switchboard::startRecording();
        again();
        impl->a_hidl_c_iom_open(1, 2, "", row.region, 0, noteAnswer());
        EXPECT_EQ(take().back(), "answer 0 -1");
        again();
        impl->a_hidl_c_iom_get(1, 2, row.region, 0xf000000000000010, noteAnswer());
        const Events events = take();
        EXPECT_NE(std::find(events.begin(), events.end(), "answer 17293822569102704656 -1"),
                  events.end())
                << "the size that was sent";
        again();
        EXPECT_EQ(int32_t{impl->a_hidl_c_iom_set(1, 2, row.region, 16)}, -1);
        EXPECT_EQ(switchboard::Switchboard::stopRecording(), Events{});
        EXPECT_TRUE(gIon.devices.empty()) << "a device is left open";
        expectSilence();
    }
    native_handle_delete(empty);
}

TEST_F(ServiceIom, aRegionThatIsTooSmallIsNotOpenedAndNotWrittenFrom) {
    const SharedBuffer small(0);  // any other has a page, and so the bytes
    switchboard::Switchboard::startRecording();
    impl->a_hidl_c_iom_open(1, 2, "", small.handle(), 0, noteAnswer());
    EXPECT_EQ(take(), mapped({"close 1", "answer 0 -1"}));
    EXPECT_EQ(int32_t{impl->a_hidl_c_iom_set(1, 2, small.handle(), 16)}, -1);
    EXPECT_EQ(switchboard::Switchboard::stopRecording(), Events{});
}

TEST_F(ServiceIom, aRegionThatIsTooSmallIsReadAsNull) {
    const SharedBuffer small(0);
    tv.on<&c_iom_get>([](uint32_t, uint16_t, void* data, uint32_t*) {
        EXPECT_EQ(data, nullptr);
        return -1;
    });
    impl->a_hidl_c_iom_get(1, 2, small.handle(), 16, noteAnswer());
    EXPECT_EQ(take(), mapped({"close 1", "answer 16 -1"}));
}

TEST_F(ServiceIom, outputIsNotCopied) {
    const hidl_vec<uint8_t> data = {1, 2, 3};
    tv.on<&c_iom_output>([&](uint32_t iom, const IOM_OUTPUT_T* output) {
        EXPECT_EQ(iom, 0xf0000001u);
        EXPECT_EQ(output->ui4_length, 3u);
        EXPECT_EQ(output->pui1_data, data.data());
        return -3;
    });
    EXPECT_EQ(int32_t{impl->a_hidl_c_iom_output(0xf0000001, data)}, -3);
    tv.on<&c_iom_output>([](uint32_t, const IOM_OUTPUT_T* output) {
        EXPECT_EQ(output->ui4_length, 0u);
        return 0;
    });
    EXPECT_EQ(int32_t{impl->a_hidl_c_iom_output(1, {})}, 0);
}

}  // namespace
