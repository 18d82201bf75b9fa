/** Rating records, and the conversion of a programme's list of ratings. */
#include <algorithm>
#include <cstring>
#include <ostream>

#include "QorTvApiRatingImpl.h"
#include "middleware/rating.h"
#include "support/core_fixture.h"
#include "support/short_memory.h"

namespace {

std::vector<const void*>* gReleased = nullptr;  // addresses that were freed; null: not recorded

}  // namespace

extern "C" void __real_free(void* block);
extern "C" void __wrap_free(void* block);

void __wrap_free(void* block) {
    std::vector<const void*>* released = std::exchange(gReleased, nullptr);
    if (released != nullptr && block != nullptr) released->push_back(block);
    __real_free(block);
    gReleased = released;
}

namespace {

using Bytes = std::vector<uint8_t>;

template <typename Record>
Bytes bytesOf(const Record& record) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&record);
    return Bytes(bytes, bytes + sizeof(record));
}

/** A record whose bytes all differ from their neighbours, flags among them too. */
template <typename Record>
void fill(Record* record) {
    auto* bytes = reinterpret_cast<uint8_t*>(record);
    for (size_t i = 0; i < sizeof(*record); ++i) bytes[i] = 0x81 + 7 * i;
}

class ServiceRating : public ServiceTest {
  protected:
    ServiceRating() { log.take(); }

    std::vector<LogLine> linesOf(const std::string& method, const std::vector<std::string>& texts) {
        std::vector<LogLine> lines;
        for (const std::string& text : texts) {
            lines.push_back(debugLine("QorTvApiRatingImpl(service)",
                                      "a_hidl_a_qortvapi_rating_" + method, text));
        }
        return lines;
    }

    const sp<QorTvApiRatingImpl> impl = new QorTvApiRatingImpl();
};

// United States.

TEST_F(ServiceRating, flagsOfUsTelevisionAreReadAsZeroAndOne) {
    const auto answers = [&] {
        std::vector<std::pair<Bytes, int32_t>> all;
        impl->a_hidl_a_qortvapi_rating_get_us_tv_setting_info(
                [&](const HIDL_US_TV_Rating_BLOCK_T& block, int32_t result) {
                    all.emplace_back(bytesOf(block), result);
                });
        return all;
    };
    const Bytes written = {0, 1, 2, 255, 0, 0, 128, 0, 0, 0, 0, 0, 0, 0, 7, 3, 0, 1, 254, 0};
    Bytes expected;
    for (const uint8_t byte : written) expected.push_back(byte != 0 ? 1 : 0);
    tv.on<&a_qortvapi_rating_get_us_tv_setting_info>([&](US_TV_RATING_BLOCK_T* block) {
        EXPECT_EQ(bytesOf(*block), Bytes(20));
        memcpy(block, written.data(), sizeof(*block));
        return 4;
    });
    EXPECT_EQ(answers(), (std::vector<std::pair<Bytes, int32_t>>{{expected, 4}}));
    tv.on<&a_qortvapi_rating_get_us_tv_setting_info>([](US_TV_RATING_BLOCK_T*) { return -4; });
    EXPECT_EQ(answers(), (std::vector<std::pair<Bytes, int32_t>>{{Bytes(20), -4}}));
    EXPECT_EQ(log.take(), linesOf("", {}));
}

TEST_F(ServiceRating, flagsOfUsTelevisionAreWrittenAsTheyCome) {
    HIDL_US_TV_Rating_BLOCK_T block;
    fill(&block);
    tv.on<&a_qortvapi_rating_set_us_tv_setting_info>([&](const US_TV_RATING_BLOCK_T* its_block) {
        EXPECT_EQ(bytesOf(*its_block), bytesOf(block));
        return -4;
    });
    EXPECT_EQ(impl->a_hidl_a_qortvapi_rating_set_us_tv_setting_info(block), -4);
    EXPECT_EQ(log.take(), linesOf("", {}));
}

// Rating tables that the broadcast brings.

TEST_F(ServiceRating, whatATableSaysIsAlways64Bytes) {
    HIDL_Open_Vchip_Key_Param_T key{};
    key.region = 0xf1f2f3f4;
    key.dimension = 0xe1e2;
    key.level = 0xd1;
    for (const uint8_t written : {0x00, 0xf1}) {
        tv.on<&a_qortvapi_rating_get_op_vchip_info>(
                [&](const OPEN_VCHIP_KEY_PARAM_T* its_key, uint8_t* info) {
                    EXPECT_EQ(its_key->ui4_region, 0xf1f2f3f4);
                    EXPECT_EQ(its_key->ui2_dimension, 0xe1e2);
                    EXPECT_EQ(its_key->ui1_level, 0xd1);
                    EXPECT_EQ(Bytes(info, info + 64), Bytes(64));
                    memset(info, written, 64);
                    return -3;
                });
        using Infos = Answers<Bytes, int32_t>;
        EXPECT_EQ(Infos::of([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_rating_get_op_vchip_info(key, callback);
                  }),
                  (Infos::All{{Bytes(64, written), -3}}));
    }
    EXPECT_EQ(log.take(), linesOf("", {}));
}

TEST_F(ServiceRating, theFlagsOfATableAreReadForItsNumbers) {
    HIDL_Open_Vchip_Block_Data_T sent;
    fill(&sent);
    const Bytes numbers = {sent.region, sent.dimension, sent.level_count};
    Bytes unwritten = numbers;
    unwritten.resize(258);
    OPEN_VCHIP_BLOCK_DATA_T other;
    fill(&other);
    other.ui1_region = 200;
    other.ui1_dimension = 201;
    other.ui1_level_count = 202;

    for (const uint8_t debugging : {1, 0}) {
        for (const bool writes : {true, false}) {
            mTvApiDebug = debugging;
            const int32_t result = writes ? 5 : -5;
            tv.on<&a_qortvapi_rating_get_op_vchip_setting_info>(
                    [&](OPEN_VCHIP_BLOCK_DATA_T* block) {
                        EXPECT_EQ(bytesOf(*block), unwritten) << "the array is not passed in";
                        EXPECT_EQ(log.take(), linesOf("get_op_vchip_setting_info",
                                                      {"GET OPEN VCHIP setting IN! [129, 136]"}));
                        if (writes) *block = other;
                        return result;
                    });
            int answers = 0;
            impl->a_hidl_a_qortvapi_rating_get_op_vchip_setting_info(
                    sent, [&](const HIDL_Open_Vchip_Block_Data_T& block, int32_t its_result) {
                        ++answers;
                        EXPECT_EQ(bytesOf(block), writes ? bytesOf(other) : unwritten);
                        EXPECT_EQ(its_result, result);
                        EXPECT_EQ(log.take(),
                                  linesOf("get_op_vchip_setting_info",
                                          {writes ? "GET OPEN VCHIP setting RET = 5! [200, 201]"
                                                  : "GET OPEN VCHIP setting RET = -5! "
                                                    "[129, 136]"}));
                    });
            EXPECT_EQ(answers, 1);
            EXPECT_TRUE(log.take().empty());
        }
    }
}

TEST_F(ServiceRating, theFlagsOfATableAreWrittenWhole) {
    HIDL_Open_Vchip_Block_Data_T block;
    fill(&block);
    tv.on<&a_qortvapi_rating_set_op_vchip_setting_info>(
            [&](const OPEN_VCHIP_BLOCK_DATA_T* its_block) {
                EXPECT_EQ(bytesOf(*its_block), bytesOf(block));
                return -4;
            });
    EXPECT_EQ(impl->a_hidl_a_qortvapi_rating_set_op_vchip_setting_info(block), -4);
    EXPECT_EQ(log.take(), linesOf("", {}));
}

// Ratings of programmes.

using Maps = Answers<std::string, std::string, std::string, int32_t>;

/** Hands `call` a callback that notes the texts of a rating map and the result. */
template <typename Call>
Maps::All mapsOf(const Call& call) {
    return Maps::of([&](const auto& note) {
        call([&](const HIDL_T_RATING_MAP_TO_G& map, int32_t result) {
            note(map.region, map.dimension, map.rating, result);
        });
    });
}

TEST_F(ServiceRating, ofTheCurrentProgrammeIsThreeTexts) {
    const auto answers = [&] {
        return mapsOf([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_rating_get_crnt_rating_info(callback);
        });
    };
    tv.on<&a_qortvapi_rating_get_crnt_rating_info>([](RATING_MAP_T* map) {
        EXPECT_EQ(bytesOf(*map), Bytes(354));
        strcpy(map->s_region, "US");
        memcpy(map->s_dimension, "MPAA\0rest", 9);
        memset(map->s_rating, 'x', sizeof(map->s_rating));  // to its last byte
        return 2;
    });
    EXPECT_EQ(answers(), (Maps::All{{"US", "MPAA", std::string(256, 'x'), 2}}));
    tv.on<&a_qortvapi_rating_get_crnt_rating_info>([](RATING_MAP_T*) { return -2; });
    EXPECT_EQ(answers(), (Maps::All{{"", "", "", -2}}));
    EXPECT_EQ(log.take(), linesOf("", {}));
}

/** A node as the middleware receives it. */
struct Node {
    uint16_t region;
    uint16_t count;
    bool has_name;
    std::string name;
    std::vector<std::pair<uint16_t, uint16_t>> entries;

    bool operator==(const Node& other) const {
        return region == other.region && count == other.count && has_name == other.has_name &&
               name == other.name && entries == other.entries;
    }
};

void PrintTo(const Node& node, std::ostream* out) {
    *out << "{region " << node.region << ", count " << node.count << ", name "
         << (node.has_name ? '"' + node.name + '"' : "null") << ", entries";
    for (const auto& [dimension, value] : node.entries) *out << ' ' << dimension << ':' << value;
    *out << "}";
}

using Entry = HIDL_EVCTX_ATSC_RATING_ENTRY_T;

HIDL_EVCTX_ATSC_RATING_LIST_T rating(uint16_t region, uint16_t count, const std::string& name,
                                     const std::vector<Entry>& entries) {
    HIDL_EVCTX_ATSC_RATING_LIST_T rating{};
    rating.region = region;
    rating.count = count;
    rating.name = name;
    rating.entries = entries;
    return rating;
}

class ServiceRatingConversion : public ServiceRating {
  protected:
    /** Converts the list of `ratings` with no more than `granted` blocks of memory. The blocks that
     * are not in the list are freed before the middleware sees it, the others after the answer, in
     * the order of the list: the name, the entries and the node of each. Returns the list. */
    std::vector<Node> convert(const hidl_vec<HIDL_EVCTX_ATSC_RATING_LIST_T>& ratings, int granted) {
        std::vector<Node> nodes;
        std::vector<const void*> blocks;
        std::vector<const void*> released;
        size_t released_before = 0;
        tv.on<&a_qortvapi_rating_convert_rating_info>([&](const RatingListNode* list,
                                                          RATING_MAP_T* map) {
            gReleased = nullptr;
            released_before = released.size();
            for (const RatingListNode* node = list; node != nullptr; node = node->pt_next) {
                Node copy{node->ui2_region, node->ui2_count, node->s_name != nullptr, "", {}};
                if (copy.has_name) copy.name = node->s_name;
                for (uint16_t i = 0; i < node->ui2_count; ++i) {
                    copy.entries.emplace_back(node->at_entry[i].ui2_dimension,
                                              node->at_entry[i].ui2_value);
                }
                if (copy.has_name) blocks.push_back(node->s_name);
                blocks.push_back(node->at_entry);
                blocks.push_back(node);
                nodes.push_back(std::move(copy));
            }
            EXPECT_EQ(bytesOf(*map), Bytes(354));
            strcpy(map->s_region, "US");
            strcpy(map->s_dimension, "MPAA");
            strcpy(map->s_rating, "PG");
            gReleased = &released;
            return -9;
        });
        const ShortMemory memory(granted);
        const int before = arraysAskedFor();
        gReleased = &released;
        const Maps::All answers = mapsOf([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_rating_convert_rating_info(
                    ratings, [&](const HIDL_T_RATING_MAP_TO_G& map, int32_t result) {
                        EXPECT_EQ(released.size(), released_before) << "freed before the answer";
                        callback(map, result);
                    });
        });
        gReleased = nullptr;
        mGranted = std::min(arraysAskedFor() - before, granted);
        EXPECT_EQ(answers, (Maps::All{{"US", "MPAA", "PG", -9}}));
        EXPECT_EQ(released.size(), static_cast<size_t>(mGranted));
        const auto in_list = released.begin() + static_cast<ptrdiff_t>(released_before);
        EXPECT_EQ(std::vector<const void*>(in_list, released.end()), blocks);
        return nodes;
    }

    /** The lines of a conversion: of each of `exceeded` nodes, and of the end of memory. */
    std::vector<LogLine> lines(size_t exceeded) {
        std::vector<std::string> texts(exceeded, "Warning:list exceed!!!!\n");
        texts.emplace_back("Alloc memore fail!!!!\n");
        return linesOf("convert_rating_info", texts);
    }

    int mGranted = 0;  // blocks in the last conversion
};

TEST_F(ServiceRatingConversion, ofNothingIsNotAnswered) {
    for (const uint8_t debugging : {1, 0}) {
        mTvApiDebug = debugging;
        switchboard::Switchboard::startRecording();
        EXPECT_EQ(mapsOf([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_rating_convert_rating_info({}, callback);
                  }),
                  Maps::All{});
        EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty());
        EXPECT_EQ(log.take(), lines(0));
    }
}

TEST_F(ServiceRatingConversion, makesNodesOfTheFirstRatingUntilAnAllocationFails) {
    struct Row {
        HIDL_EVCTX_ATSC_RATING_LIST_T first;
        int blocks;  // of a node
        bool exceeds;
        Node node;
    };
    const Row rows[] = {
            // Every entry is the first, however many there are.
            {rating(0xf1f2, 2, "US", {{1, 2}, {3, 4}}),
             3,
             true,
             {0xf1f2, 2, true, "US", {{1, 2}, {1, 2}}}},
            {rating(1, 3, "US", {{0xe1e2, 0xd1d2}}),
             3,
             true,
             {1, 3, true, "US", {{0xe1e2, 0xd1d2}, {0xe1e2, 0xd1d2}, {0xe1e2, 0xd1d2}}}},
            {rating(1, 1, "", {{5, 6}, {7, 8}}), 2, true, {1, 1, false, "", {{5, 6}}}},
            {rating(1, 0, "US", {{5, 6}}), 3, true, {1, 0, true, "US", {}}},
            {rating(1, 0, "", {}), 2, false, {1, 0, false, "", {}}},
            {rating(1, 2, "US", {}), 3, false, {1, 2, true, "US", {{0, 0}, {0, 0}}}},
    };
    for (const Row& row : rows) {
        for (int granted = 0; granted <= 3 * row.blocks + 1; ++granted) {
            SCOPED_TRACE(testing::PrintToString(row.node) + " with " + std::to_string(granted));
            const auto whole = static_cast<size_t>(granted / row.blocks);
            mTvApiDebug = 1;
            EXPECT_EQ(convert({row.first, rating(99, 1, "other", {{9, 9}})}, granted),
                      std::vector<Node>(whole, row.node));
            EXPECT_EQ(log.take(), lines(row.exceeds ? whole : 0));
            EXPECT_EQ(mGranted, granted);
            mTvApiDebug = 0;
            EXPECT_EQ(convert({row.first}, granted), std::vector<Node>(whole, row.node));
            EXPECT_EQ(log.take(), lines(0));
        }
    }
}

/** Without a limit from outside the list stays within its own, and the service lives. */
TEST_F(ServiceRatingConversion, hasABudget) {
    constexpr size_t kBudget = 4 << 20;
    constexpr int kUnlimited = 1 << 30;
    mTvApiDebug = 0;

    // Sixteen arrays of the largest size leave 64 bytes, too few for their nodes.
    EXPECT_EQ(convert({rating(1, UINT16_MAX, "", {{1, 2}})}, kUnlimited).size(), 15u);
    EXPECT_EQ(log.take(), lines(0));

    // A name that alone exceeds the budget, and one that leaves no room for entries.
    EXPECT_EQ(convert({rating(1, 1, std::string(kBudget, 'x'), {{1, 2}})}, kUnlimited).size(), 0u);
    EXPECT_EQ(mGranted, 1) << "the node";
    EXPECT_EQ(convert({rating(1, 9999, std::string(kBudget - 9999, 'x'), {})}, kUnlimited).size(),
              0u);
    EXPECT_EQ(mGranted, 2) << "the node and the name";
    log.take();

    // The smallest node there is: blocks count with more than their bytes.
    const size_t smallest = convert({rating(1, 0, "", {})}, kUnlimited).size();
    EXPECT_LT(smallest * sizeof(RatingListNode), kBudget);
    EXPECT_GT(smallest * sizeof(RatingListNode), kBudget / 4);
    EXPECT_EQ(log.take(), lines(0));
}

}  // namespace
