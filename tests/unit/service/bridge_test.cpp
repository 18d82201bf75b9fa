/** Record images of other sizes than the record, and calls without a result callback. */
#include "bridge.h"

#include <cstring>
#include <functional>

#include "QorTvApiChannelListImpl.h"
#include "middleware/channellist.h"
#include "support/service_fixture.h"

namespace {

hidl_vec<uint8_t> bytes(size_t count) {
    return std::vector<uint8_t>(count, 0xab);
}

class ServiceInputImage : public ServiceTest {
  protected:
    const sp<QorTvApiChannelListImpl> impl = new QorTvApiChannelListImpl();
};

/** A record of `count` bytes 0xab and a zeroed tail. */
template <typename Record>
bool holds(const Record* record, size_t count) {
    uint8_t expected[sizeof(Record)] = {};
    memset(expected, 0xab, count);
    return memcmp(record, expected, sizeof(Record)) == 0;
}

TEST_F(ServiceInputImage, aShorterVectorLeavesTheTailZero) {
    size_t count = 0;
    tv.on<&a_qortvapi_channellist_get_channel_number_by_query_info>(
            [&](uint32_t, uint32_t, uint16_t, const CHANNEL_QUERY_T* query) {
                return holds(query, count);
            });
    tv.on<&a_qortvapi_bisskey_get_recs_number_by_header>(
            [&](uint32_t, const BSL_HEADER_T* header, uint16_t*, uint32_t*) {
                return holds(header, count);
            });
    for (count = 0; count <= 12; ++count) {
        const int32_t held = impl->a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info(
                1, 2, 3, bytes(count));
        EXPECT_TRUE(held) << count;
    }
    for (count = 0; count <= 16; ++count) {
        impl->a_hidl_a_qortvapi_bisskey_get_recs_number_by_header(
                1, bytes(count),
                [&](uint16_t, uint32_t, int32_t held) { EXPECT_TRUE(held) << count; });
    }
}

struct OversizedRow {
    const char* method;
    size_t size;
    std::function<void(QorTvApiChannelListImpl&, size_t)> call;
};

void PrintTo(const OversizedRow& row, std::ostream* out) {
    *out << row.method;
}

// clang-format off
const OversizedRow kOversizedRows[] = {
    {"a_hidl_a_qortvapi_channellist_interface", 8,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_interface(1, bytes(n), 2, 3, 4); }},
    {"a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info", 12,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info(1, 2, 3, bytes(n)); }},
    {"a_hidl_a_qortvapi_channellist_get_channellist_by_query_info", 12,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_get_channellist_by_query_info(1, 2, 3, bytes(n), 4, 5, [](const auto&...) {}); }},
    {"a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info", 396,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info(1, 2, 3, 4, 5, 6, bytes(n), {}); }},
    {"a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info", 628,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info(1, 2, 3, 4, 5, 6, {}, bytes(n)); }},
    {"a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify", 396,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(1, 2, 3, 4, 5, 6, bytes(n), {}); }},
    {"a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify", 628,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(1, 2, 3, 4, 5, 6, {}, bytes(n)); }},
    {"a_hidl_a_qortvapi_satllist_update_rec", 276,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_satllist_update_rec(1, bytes(n), true); }},
    {"a_hidl_a_qortvapi_tsl_update_rec", 628,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_tsl_update_rec(1, bytes(n), true); }},
    {"a_hidl_a_qortvapi_nwl_update_rec", 304,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_nwl_update_rec(1, bytes(n), true); }},
    {"a_hidl_a_qortvapi_bisskey_get_recs_number_by_header", 16,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_bisskey_get_recs_number_by_header(1, bytes(n), [](const auto&...) {}); }},
    {"a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header", 16,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header(1, bytes(n), 2, [](const auto&...) {}); }},
    {"a_hidl_a_qortvapi_bisskey_set_bsl_rec_info", 32,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(1, 2, bytes(n), [](const auto&...) {}); }},
    {"a_hidl_a_qortvapi_bisskey_is_same_record", 32,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_bisskey_is_same_record(bytes(n), {}); }},
    {"a_hidl_a_qortvapi_bisskey_is_same_record", 32,
     [](auto& impl, size_t n) { impl.a_hidl_a_qortvapi_bisskey_is_same_record({}, bytes(n)); }},
};
// clang-format on

class ServiceOversizedImageDeathTest : public ServiceInputImage,
                                       public testing::WithParamInterface<OversizedRow> {};

TEST_P(ServiceOversizedImageDeathTest, endsTheProcess) {
    const OversizedRow& row = GetParam();
    row.call(*impl, row.size);  // an image of the full size is taken
    EXPECT_DEATH(row.call(*impl, row.size + 1),
                 std::string(row.method) + ": bounded copy of " + std::to_string(row.size + 1) +
                         " bytes into a block of " + std::to_string(row.size));
}

INSTANTIATE_TEST_SUITE_P(, ServiceOversizedImageDeathTest, testing::ValuesIn(kOversizedRows));

using ServiceCallbackDeathTest = ServiceInputImage;

TEST_F(ServiceCallbackDeathTest, aMissingCallbackEndsTheProcess) {
    // Without a transport around it, as on a device, nothing catches what the call throws.
    const auto call = [&]() noexcept {
        impl->a_hidl_a_qortvapi_channellist_getChannelListMode(nullptr);
    };
    EXPECT_DEATH(call(), "bad_function_call");
}

TEST_F(ServiceInputImage, signedListIdsKeepTheirSign) {
    tv.on<&a_qortvapi_satllist_qry_rec_id>([](int32_t satl_id, int8_t index, uint16_t* id) {
        EXPECT_EQ(satl_id, -2);
        EXPECT_EQ(index, -3);
        *id = 0xf001;
        return 0;
    });
    impl->a_hidl_a_qortvapi_satllist_qry_rec_id(-2, -3, [](uint16_t id, int32_t result) {
        EXPECT_EQ(id, 0xf001);
        EXPECT_EQ(result, 0);
    });
    tv.on<&a_qortvapi_tsl_qry_rec_id>([](uint16_t tsl_id, uint8_t index, uint16_t*) {
        EXPECT_EQ(tsl_id, 0xfffe);
        EXPECT_EQ(index, 0xfd);
        return 0;
    });
    impl->a_hidl_a_qortvapi_tsl_qry_rec_id(0xfffe, 0xfd, [](uint16_t, int32_t) {});
}

}  // namespace
