/** Methods whose buffers have a fixed size allocate nothing; what the others do without memory. */
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <type_traits>

#include "QorTvApiBroadcastImpl.h"
#include "QorTvApiCIImpl.h"
#include "QorTvApiChannelListImpl.h"
#include "QorTvApiConfigImpl.h"
#include "QorTvApiEventImpl.h"
#include "QorTvApiInputSrcImpl.h"
#include "QorTvApiMultiviewImpl.h"
#include "QorTvApiRatingImpl.h"
#include "QorTvApiScanImpl.h"
#include "QorTvApiTimeImpl.h"
#include "hhandler/hh_iom.h"
#include "hhandler/hh_svctx.h"
#include "middleware/channellist.h"
#include "middleware/event.h"
#include "middleware/svctx.h"
#include "support/recording_client.h"
#include "support/service_fixture.h"
#include "support/short_memory.h"

namespace {

std::atomic<int> gAllocations{0};
bool gMemoryIsShort = false;           // allocations that may fail do
constexpr uint8_t kLeftBehind = 0xa5;  // the bytes of newly allocated memory

void* allocate(size_t size) {
    ++gAllocations;
    void* memory = malloc(size == 0 ? 1 : size);
    if (memory == nullptr) abort();
    return memset(memory, kLeftBehind, size);
}

}  // namespace

void* operator new(size_t size) {
    return allocate(size);
}
void* operator new[](size_t size) {
    return allocate(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return gMemoryIsShort ? nullptr : allocate(size);
}
void operator delete(void* memory) noexcept {
    free(memory);
}
void operator delete[](void* memory) noexcept {
    free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    free(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    free(memory);
}

namespace {

/** A result callback that does nothing. */
struct IgnoreResults {
    template <typename... Results>
    void operator()(const Results&...) const {}
};

/** An argument for a method: empty or 0; for a result callback the one above. */
template <typename Argument>
Argument emptyArgument() {
    if constexpr (std::is_assignable_v<Argument&, IgnoreResults>) {
        return IgnoreResults{};
    } else {
        return Argument{};
    }
}

/** Calls a method with empty arguments. Returns the number of its allocations. */
template <typename Implementation, typename Result, typename... Arguments>
int allocationsOf(Result (Implementation::*method)(Arguments...)) {
    const sp<Implementation> implementation = new Implementation();
    const int before = gAllocations + arraysAskedFor();
    (*implementation.*method)(emptyArgument<std::decay_t<Arguments>>()...);
    return gAllocations + arraysAskedFor() - before;
}

struct Row {
    const char* function;
    int (*allocations)();
};

template <auto Method>
int allocations() {
    return allocationsOf(Method);
}

// clang-format off
const Row kRows[] = {
#define ROW(function) {#function, &allocations<&QorTvApiChannelListImpl::a_hidl_##function>}
#include "rows/channel_list.inc"
#undef ROW
#define ROW(function) {#function, &allocations<&QorTvApiCIImpl::a_hidl_##function>}
#include "rows/ci.inc"
// Those of the CI interface that are no plain bridges and whose buffers have a fixed size.
ROW(a_qortvapi_ci_key_query),
ROW(a_qortvapi_ci_set_mmi_enq_ans),
ROW(a_qortvapi_ci_set),
#undef ROW
#define ROW(function) {#function, &allocations<&QorTvApiImpl::a_hidl_##function>}
#define HBBTV_ROW(function) ROW(function)
#include "rows/core_applications.inc"
#include "rows/core_contexts.inc"
#include "rows/core_settings.inc"
#include "rows/core_fixed_size.inc"
#undef ROW
#define ROW(class, function, entry) {#function, &allocations<&class::a_hidl_##function>}
#include "rows/broadcast.inc"
#include "rows/config.inc"
#include "rows/event.inc"
#include "rows/input_source.inc"
#include "rows/multiview.inc"
#include "rows/rating.inc"
#include "rows/scan.inc"
#include "rows/time.inc"
#include "rows/domain_fixed_size.inc"
#undef ROW
};

/** A method that reads a block of bytes about an event. */
struct BlockRow {
    const char* method;
    Return<void> (QorTvApiEventImpl::*call)(uint32_t, uint32_t, uint32_t,
                                            std::function<void(const hidl_vec<uint8_t>&, int32_t)>);
    void (*plug)(switchboard::Switchboard& tv,
                 const std::function<int32_t(uint32_t, uint32_t, uint8_t*, uint32_t)>& read);
};

const BlockRow kBlockRows[] = {
#define ROW(method, function) \
    {"a_hidl_" #method, &QorTvApiEventImpl::a_hidl_##method, \
     [](auto& tv, const auto& read) { tv.template on<&function>(read); }}
#include "rows/event_blocks.inc"
#undef ROW
};
// clang-format on

class ServiceAllocation : public ServiceTest {
  protected:
    ServiceAllocation() { mTvApiDebug = 0; }
};

TEST_F(ServiceAllocation, isNotNeededByPlainMethods) {
    for (const Row& row : kRows) EXPECT_EQ(row.allocations(), 0) << row.function;
}

TEST_F(ServiceAllocation, isNotNeededByMethodsThatAlwaysLog) {
    // Their lines are not captured, because capturing allocates.
    __android_log_set_minimum_priority(ANDROID_LOG_ERROR);
    EXPECT_EQ(allocationsOf(&QorTvApiImpl::a_hidl_send_key_and_mouse), 0) << "nobody listens";
    EXPECT_EQ(
            allocationsOf(&QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_op_vchip_setting_info),
            0);
}

TEST_F(ServiceAllocation, isCounted) {
    EXPECT_EQ(allocationsOf(&QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationInfo_ex), 1)
            << "the buffer of a size that the client chose";
    const sp<QorTvApiChannelListImpl> impl = new QorTvApiChannelListImpl();
    const int before = gAllocations;
    impl->a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(1, 2, 0, 1, 1,
                                                            [](const auto&, int32_t) {});
    EXPECT_EQ(gAllocations, before + 1) << "the buffer of an array read";
    for (const BlockRow& row : kBlockRows) EXPECT_EQ(allocationsOf(row.call), 1) << row.method;
}

class ServiceShortMemory : public ServiceTest {
  protected:
    ServiceShortMemory() { gMemoryIsShort = true; }
    ~ServiceShortMemory() override { gMemoryIsShort = false; }

    /** `method` answers with no bytes and the result, and logs `line` while debugging is on. */
    template <typename Method>
    void check(Method method, const LogLine& line) {
        const sp<QorTvApiChannelListImpl> impl = new QorTvApiChannelListImpl();
        for (const bool debugging : {true, false}) {
            mTvApiDebug = debugging ? 1 : 0;
            log.take();
            int answers = 0;
            (*impl.*method)(1, 2, 5, 10, 8, [&](const hidl_vec<uint8_t>& records, int32_t result) {
                ++answers;
                EXPECT_EQ(records.size(), 0u);
                EXPECT_EQ(result, -6);
            });
            EXPECT_EQ(answers, 1);
            const std::vector<LogLine> lines = log.take();
            EXPECT_EQ(std::count(lines.begin(), lines.end(), line), debugging ? 1 : 0);
        }
    }
};

TEST_F(ServiceShortMemory, readsTransportStreamsWithoutABuffer) {
    tv.on<&a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id>(
            [](uint16_t, uint16_t, uint16_t, uint16_t, uint16_t, TSL_REC_T* records) {
                EXPECT_EQ(records, nullptr);
                return -6;
            });
    check(&QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id,
          debugLine("hh_channellist", "hh_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id",
                    "pt_tsl_rec malloc fail \n"));
}

TEST_F(ServiceShortMemory, readsNetworksWithoutABuffer) {
    tv.on<&a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id>(
            [](uint16_t, uint16_t, uint16_t, uint16_t, uint16_t, NWL_REC_T* records) {
                EXPECT_EQ(records, nullptr);
                return -6;
            });
    check(&QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id,
          debugLine("hh_channellist", "hh_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id",
                    "pt_nwl_rec malloc fail \n"));
}

TEST_F(ServiceShortMemory, doesNotAnswerBlocksOfEvents) {
    const sp<QorTvApiEventImpl> impl = new QorTvApiEventImpl();
    for (const BlockRow& row : kBlockRows) {
        SCOPED_TRACE(row.method);
        for (const uint8_t debugging : {0, 1}) {
            mTvApiDebug = debugging;
            log.take();
            switchboard::Switchboard::startRecording();
            (*impl.*row.call)(1, 2, 3, [](const auto&...) { ADD_FAILURE() << "an answer"; });
            EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty());
            EXPECT_EQ(log.take(),
                      (std::vector<LogLine>{debugLine("QorTvApiEventImpl(service)", row.method,
                                                      "allocte memory fail !!!!\n")}));
        }
    }
}

/** Reads into a buffer of a size that the client chooses and that is not zeroed. */
class ServiceUninitialisedRead : public ServiceTest {
  protected:
    const sp<QorTvApiImpl> impl = new QorTvApiImpl();
};

TEST_F(ServiceUninitialisedRead, handsOverWhatMemoryHeld) {
    const std::vector<uint8_t> expected = {1, 2, kLeftBehind, kLeftBehind};
    int answers = 0;
    const auto check = [&](const hidl_vec<uint8_t>& bytes, int32_t) {
        ++answers;
        EXPECT_EQ(std::vector<uint8_t>(bytes), expected);
    };
    const auto write = [&](void* data) {
        memcpy(data, expected.data(), 2);
        return 0;
    };
    tv.on<&c_svctx_get_conn_attr>(
            [&](uint32_t, uint32_t, uint32_t, void* data) { return write(data); });
    impl->a_hidl_c_svctx_get_conn_attr(1, 2, 3, 4, check);
    tv.on<&c_svctx_generic_get_info>(
            [&](uint32_t, uint32_t, uint32_t, void* data, uint32_t) { return write(data); });
    impl->a_hidl_c_svctx_generic_get_info(1, 2, 3, 4, check);
    EXPECT_EQ(answers, 2);
}

TEST_F(ServiceUninitialisedRead, handsOverWhatMemoryHeldBehindWhatIsKnownOfAnEvent) {
    const sp<QorTvApiEventImpl> events = new QorTvApiEventImpl();
    const std::vector<uint8_t> expected = {1, 2, kLeftBehind, kLeftBehind};
    for (const BlockRow& row : kBlockRows) {
        row.plug(tv, [&](uint32_t, uint32_t, uint8_t* block, uint32_t) {
            memcpy(block, expected.data(), 2);
            return 0;
        });
        int answers = 0;
        (*events.*row.call)(1, 2, 4, [&](const hidl_vec<uint8_t>& block, int32_t) {
            ++answers;
            EXPECT_EQ(std::vector<uint8_t>(block), expected) << row.method;
        });
        EXPECT_EQ(answers, 1) << row.method;
    }
}

using ServiceUninitialisedReadDeathTest = ServiceUninitialisedRead;

TEST_F(ServiceUninitialisedReadDeathTest, endsTheProcessWhereMemoryIsShort) {
    const auto ignore = [](const auto&...) {};
    const auto whereMemoryIsShort = [](const auto& request) {
        gMemoryIsShort = true;
        request();
    };
    EXPECT_DEATH(
            whereMemoryIsShort([&] { impl->a_hidl_c_svctx_get_conn_attr(1, 2, 3, 16, ignore); }),
            "hh_c_svctx_get_conn_attr: no memory for 16 elements of 1 bytes");
    EXPECT_DEATH(
            whereMemoryIsShort([&] { impl->a_hidl_c_svctx_generic_get_info(1, 2, 3, 16, ignore); }),
            "hh_c_svctx_generic_get_info: no memory for 16 elements of 1 bytes");
}

/** A client that does nothing at all. */
class SilentClient : public RecordingClient {
  public:
    Return<void> notifyIom(uint64_t, uint64_t, const hidl_vec<uint8_t>&) override {
        return Return<void>();
    }
};

TEST_F(ServiceAllocation, isNotNeededByTheFanOut) {
    QorTvApiImpl::getCallbackHandlers()[0] = new SilentClient();
    const int before = gAllocations;
    _iom_nfy_fct(nullptr, 0, nullptr, 0);
    EXPECT_EQ(gAllocations, before);
}

}  // namespace
