/** Plain bridges do not allocate, and what happens where a buffer cannot be had. */
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <tuple>

#include "QorTvApiChannelListImpl.h"
#include "hhandler/hh_iom.h"
#include "middleware/channellist.h"
#include "service_fixture.h"

namespace {

std::atomic<int> gAllocations{0};
bool gMemoryIsShort = false;  // for allocations that may fail

void* allocate(size_t size) {
    ++gAllocations;
    void* memory = malloc(size == 0 ? 1 : size);
    if (memory == nullptr) abort();
    return memory;
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

/** Calls a method with empty arguments and a callback that does nothing; returns its allocations.
 */
template <typename Implementation, typename Result, typename... Arguments>
int allocationsOf(Result (Implementation::*method)(Arguments...)) {
    const sp<Implementation> implementation = new Implementation();
    std::tuple<std::decay_t<Arguments>...> arguments;
    const auto fill = [](auto& argument) {
        using Argument = std::decay_t<decltype(argument)>;
        if constexpr (!std::is_integral_v<Argument> && !std::is_same_v<Argument, hidl_string> &&
                      !std::is_same_v<Argument, hidl_vec<uint8_t>>) {
            argument = [](const auto&...) {};
        }
    };
    std::apply([&](auto&... all) { (fill(all), ...); }, arguments);
    const int before = gAllocations;
    std::apply([&](auto&... all) { (*implementation.*method)(all...); }, arguments);
    return gAllocations - before;
}

struct Row {
    const char* function;
    int (*allocations)();
};

template <auto Method>
int allocations() {
    return allocationsOf(Method);
}

#define ROW(function) \
    { #function, &allocations < &QorTvApiChannelListImpl::a_hidl_##function> }

const Row kRows[] = {
#include "channel_list_rows.inc"
};

class ServiceAllocation : public ServiceTest {
  protected:
    ServiceAllocation() { mTvApiDebug = 0; }
};

TEST_F(ServiceAllocation, isNotNeededByPlainMethods) {
    for (const Row& row : kRows) EXPECT_EQ(row.allocations(), 0) << row.function;
}

TEST_F(ServiceAllocation, isCounted) {
    const sp<QorTvApiChannelListImpl> impl = new QorTvApiChannelListImpl();
    const int before = gAllocations;
    impl->a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(1, 2, 0, 1, 1,
                                                            [](const auto&, int32_t) {});
    EXPECT_EQ(gAllocations, before + 1) << "the buffer of an array read";
}

class ServiceShortMemory : public ServiceTest {
  protected:
    ServiceShortMemory() { gMemoryIsShort = true; }
    ~ServiceShortMemory() override { gMemoryIsShort = false; }

    /** An array read answers no bytes and the result, and logs `line` while debugging is on. */
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
