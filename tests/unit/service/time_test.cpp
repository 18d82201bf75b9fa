/** Date and time: the records that the middleware receives, and those that the client receives. */
#include <array>
#include <cstring>
#include <functional>
#include <ostream>

#include "QorTvApiTimeImpl.h"
#include "middleware/time.h"
#include "support/core_fixture.h"

namespace {

using switchboard::Switchboard;
using Image = std::array<uint8_t, 10>;

constexpr Image kSent = {0x81, 0x92, 0xa3, 0xb4, 0xc5, 0xd6, 0xe7, 0xf8, 0xfe, 0xff};
constexpr Image kWritten = {0xf1, 0xe2, 0xd3, 0xc4, 0xb5, 0xa6, 0x97, 0x88, 0x02, 0x80};
constexpr int64_t kSeconds = 0x7edcba9876543210;

template <typename Record>
Image imageOf(const Record& record) {
    static_assert(sizeof(record) == sizeof(Image));
    Image image;
    memcpy(image.data(), &record, sizeof(record));
    return image;
}

template <typename Record>
Record recordOf(const Image& image) {
    static_assert(sizeof(Record) == sizeof(image));
    Record record;
    memcpy(&record, image.data(), sizeof(record));
    return record;
}

const auto kSentRecord = recordOf<HIDL_DTG_T>(kSent);
const auto kIgnore = [](const auto&...) {};

class ServiceTime : public ServiceTest {
  protected:
    ServiceTime() { log.take(); }

    const sp<QorTvApiTimeImpl> impl = new QorTvApiTimeImpl();
};

// Methods that answer a record.

/** Changes the record that the middleware function is to write. */
using Touch = std::function<void(DTG_T*)>;
using Answer = std::function<void(const HIDL_DTG_T&, int64_t)>;

struct RecordRow {
    const char* function;
    bool starts_as_sent;  // or zero
    int64_t result;       // in the width and the sign that the client is to see
    void (*plug)(Switchboard& tv, const Touch& touch);
    void (*call)(QorTvApiTimeImpl& impl, const Answer& answer);
};

void PrintTo(const RecordRow& row, std::ostream* out) {
    *out << row.function;
}

constexpr int64_t kUnsigned = 0xfffffff9;
constexpr int64_t kSigned = -7;
constexpr int64_t kLong = -0x7edcba9876543210;
constexpr int64_t kDropped = 0;

// clang-format off
const RecordRow kRecordRows[] = {
    {"a_qortvapi_utc_sec_to_dtg", true, kUnsigned,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&a_qortvapi_utc_sec_to_dtg>([=](int64_t seconds, DTG_T* record) {
             EXPECT_EQ(seconds, kSeconds);
             touch(record);
             return static_cast<uint32_t>(-7);
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_a_qortvapi_utc_sec_to_dtg(kSeconds, kSentRecord, answer);
     }},
    {"a_qortvapi_time_get_broadcast_time_ex", true, kLong,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&a_qortvapi_time_get_broadcast_time_ex>([=](DTG_T* record) {
             touch(record);
             return kLong;
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_a_qortvapi_time_get_broadcast_time_ex(kSentRecord, answer);
     }},
    {"a_qortvapi_time_convert", false, kUnsigned,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&a_qortvapi_time_convert>([=](uint16_t type, const DTG_T* input, DTG_T* record) {
             EXPECT_EQ(type, 0xfedc);
             EXPECT_EQ(imageOf(*input), kSent);
             touch(record);
             EXPECT_EQ(imageOf(*input), kSent) << "a record of its own";
             return static_cast<uint32_t>(-7);
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_a_qortvapi_time_convert(0xfedc, kSentRecord, answer);
     }},
    {"a_qortvapi_time_convert_millis_to_local_time", true, kDropped,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&a_qortvapi_time_convert_millis_to_local_time>([=](int64_t millis, DTG_T* record) {
             EXPECT_EQ(millis, kSeconds);
             touch(record);
             return -7;
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_a_qortvapi_time_convert_millis_to_local_time(
                 kSeconds, kSentRecord,
                 [&](const HIDL_DTG_T& record) { answer(record, kDropped); });
     }},
    {"c_dt_utc_sec_to_loc_dtg", true, kSigned,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&c_dt_utc_sec_to_loc_dtg>([=](int64_t seconds, DTG_T* record) {
             EXPECT_EQ(seconds, kSeconds);
             touch(record);
             return -7;
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_c_dt_utc_sec_to_loc_dtg(kSeconds, kSentRecord, answer);
     }},
    {"c_dt_conv_utc_local", false, kSigned,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&c_dt_conv_utc_local>([=](const DTG_T* input, DTG_T* record) {
             EXPECT_EQ(imageOf(*input), kSent);
             touch(record);
             EXPECT_EQ(imageOf(*input), kSent) << "a record of its own";
             return -7;
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_c_dt_conv_utc_local(kSentRecord, answer);
     }},
    {"c_dt_mjd_to_dtg", false, kSigned,
     [](Switchboard& tv, const Touch& touch) {
         tv.on<&c_dt_mjd_to_dtg>([=](uint32_t mjd, DTG_T* record) {
             EXPECT_EQ(mjd, 0xfedcba98);
             touch(record);
             return -7;
         });
     },
     [](QorTvApiTimeImpl& impl, const Answer& answer) {
         impl.a_hidl_c_dt_mjd_to_dtg(0xfedcba98, answer);
     }},
};
// clang-format on

class ServiceTimeRecord : public ServiceTime, public testing::WithParamInterface<RecordRow> {
  protected:
    /** Calls the method; the middleware does `touch`. Returns what is answered as a record. */
    Image answerWhere(const Touch& touch) {
        const RecordRow& row = GetParam();
        row.plug(tv, [&](DTG_T* record) {
            EXPECT_EQ(imageOf(*record), row.starts_as_sent ? kSent : Image{});
            touch(record);
        });
        int answers = 0;
        Image answered = {};
        Switchboard::startRecording();
        row.call(*impl, [&](const HIDL_DTG_T& record, int64_t result) {
            ++answers;
            answered = imageOf(record);
            EXPECT_EQ(result, row.result);
        });
        EXPECT_EQ(Switchboard::stopRecording(), std::vector<std::string>{row.function});
        EXPECT_EQ(answers, 1);
        return answered;
    }
};

TEST_P(ServiceTimeRecord, isAnsweredAsTheMiddlewareWritesIt) {
    EXPECT_EQ(answerWhere([](DTG_T* record) { *record = recordOf<DTG_T>(kWritten); }), kWritten);
}

TEST_P(ServiceTimeRecord, isWhatItStartedAsWhereTheMiddlewareWritesNothing) {
    EXPECT_EQ(answerWhere([](DTG_T*) {}), GetParam().starts_as_sent ? kSent : Image{});
}

INSTANTIATE_TEST_SUITE_P(, ServiceTimeRecord, testing::ValuesIn(kRecordRows),
                         [](const auto& row) { return std::string(row.param.function); });

TEST_F(ServiceTime, recordsHaveTheSameFieldsOnBothSides) {
    tv.on<&a_qortvapi_utc_sec_to_dtg>([](int64_t, DTG_T* record) {
        EXPECT_EQ(record->ui2_year, 2026);
        EXPECT_EQ(record->ui1_month, 1);
        EXPECT_EQ(record->ui1_day, 31);
        EXPECT_EQ(record->ui1_day_of_week, 6);
        EXPECT_EQ(record->ui1_hour, 23);
        EXPECT_EQ(record->ui1_minute, 58);
        EXPECT_EQ(record->ui1_second, 59);
        EXPECT_EQ(record->b_gmt, 2);
        EXPECT_EQ(record->b_dst, 255);
        return 0;
    });
    const HIDL_DTG_T date_time = {2026, 1, 31, 6, 23, 58, 59, 2, 255};
    int answers = 0;
    impl->a_hidl_a_qortvapi_utc_sec_to_dtg(1, date_time, [&](const HIDL_DTG_T& answered, uint32_t) {
        ++answers;
        EXPECT_EQ(imageOf(answered), imageOf(date_time));
    });
    EXPECT_EQ(answers, 1);
}

// Methods that only read a record.

struct ReadRow {
    const char* function;
    void (*plug)(Switchboard& tv, const std::function<int64_t(const DTG_T*)>& read);
    int64_t (*call)(QorTvApiTimeImpl& impl);
};

void PrintTo(const ReadRow& row, std::ostream* out) {
    *out << row.function;
}

// clang-format off
const ReadRow kReadRows[] = {
    {"a_qortvapi_dtg_to_sec",
     [](auto& tv, const auto& read) { tv.template on<&a_qortvapi_dtg_to_sec>(read); },
     [](auto& impl) -> int64_t { return impl.a_hidl_a_qortvapi_dtg_to_sec(kSentRecord); }},
    {"c_dt_dtg_to_sec",
     [](auto& tv, const auto& read) { tv.template on<&c_dt_dtg_to_sec>(read); },
     [](auto& impl) -> int64_t { return impl.a_hidl_c_dt_dtg_to_sec(kSentRecord); }},
    {"a_qortvapi_time_convert_local_time_to_millis",
     [](auto& tv, const auto& read) {
         tv.template on<&a_qortvapi_time_convert_local_time_to_millis>(
                 [=](const DTG_T* input, int64_t* millis) {
                     EXPECT_EQ(*millis, 0);
                     *millis = read(input);
                     return -7;
                 });
     },
     [](auto& impl) -> int64_t {
         return impl.a_hidl_a_qortvapi_time_convert_local_time_to_millis(kSentRecord);
     }},
};
// clang-format on

class ServiceTimeRead : public ServiceTime, public testing::WithParamInterface<ReadRow> {};

TEST_P(ServiceTimeRead, returnsWhatTheMiddlewareMakesOfTheRecord) {
    const ReadRow& row = GetParam();
    for (const int64_t value : {kSeconds, -kSeconds, int64_t{0}}) {
        row.plug(tv, [=](const DTG_T* input) {
            EXPECT_EQ(imageOf(*input), kSent);
            return value;
        });
        Switchboard::startRecording();
        EXPECT_EQ(row.call(*impl), value);
        EXPECT_EQ(Switchboard::stopRecording(), std::vector<std::string>{row.function});
    }
}

INSTANTIATE_TEST_SUITE_P(, ServiceTimeRead, testing::ValuesIn(kReadRows),
                         [](const auto& row) { return std::string(row.param.function); });

TEST_F(ServiceTime, localTimeIsZeroMillisecondsWhereTheMiddlewareFails) {
    tv.on<&a_qortvapi_time_convert_local_time_to_millis>([](const DTG_T*, int64_t*) { return -7; });
    const int64_t millis = impl->a_hidl_a_qortvapi_time_convert_local_time_to_millis(kSentRecord);
    EXPECT_EQ(millis, 0);
}

TEST_F(ServiceTime, aRecordBecomesADayAndATimeInBcd) {
    using Days = Answers<uint16_t, uint16_t, uint8_t, int32_t>;
    const auto request = [&] {
        return Days::of([&](const auto& callback) {
            impl->a_hidl_c_dt_dtg_to_mjd_bcd(kSentRecord, callback);
        });
    };
    tv.on<&c_dt_dtg_to_mjd_bcd>(
            [](const DTG_T* input, uint16_t* mjd, uint16_t* hours_minutes, uint8_t* seconds) {
                EXPECT_EQ(imageOf(*input), kSent);
                EXPECT_EQ(*mjd, 0);
                EXPECT_EQ(*hours_minutes, 0);
                EXPECT_EQ(*seconds, 0);
                *mjd = 0xfedc;
                *hours_minutes = 0x2359;
                *seconds = 0x98;
                return 6;
            });
    EXPECT_EQ(request(), (Days::All{{0xfedc, 0x2359, 0x98, 6}}));
    tv.on<&c_dt_dtg_to_mjd_bcd>([](const DTG_T*, uint16_t*, uint16_t*, uint8_t*) { return -6; });
    EXPECT_EQ(request(), (Days::All{{0, 0, 0, -6}}));
}

// The clock.

TEST_F(ServiceTime, theSourceIsAnsweredAsTheMiddlewareLeftIt) {
    using Times = Answers<uint16_t, int64_t>;
    const auto request = [&] {
        return Times::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_time_get_utc_time(7, callback);
        });
    };
    tv.on<&a_qortvapi_time_get_utc_time>([](uint16_t* source) {
        EXPECT_EQ(*source, 7);
        *source = 0xfedc;
        return kSeconds;
    });
    EXPECT_EQ(request(), (Times::All{{0xfedc, kSeconds}}));
    tv.on<&a_qortvapi_time_get_utc_time>([](uint16_t*) { return int64_t{-1}; });
    EXPECT_EQ(request(), (Times::All{{7, -1}}));
}

TEST_F(ServiceTime, theStatusOfTheLibraryIsAnsweredAsTheClientSentIt) {
    using Times = Answers<uint16_t, int32_t, int64_t>;
    const auto request = [&] {
        return Times::of([&](const auto& callback) { impl->a_hidl_c_dt_get_utc(7, -8, callback); });
    };
    tv.on<&c_dt_get_utc>([](uint16_t* status, int32_t* milliseconds) {
        EXPECT_EQ(*status, 7);
        EXPECT_EQ(*milliseconds, -8);
        *status = 0xfedc;
        *milliseconds = -999;
        return kSeconds;
    });
    EXPECT_EQ(request(), (Times::All{{7, -999, kSeconds}}));
    tv.on<&c_dt_get_utc>([](uint16_t*, int32_t*) { return int64_t{-1}; });
    EXPECT_EQ(request(), (Times::All{{7, -8, -1}}));
}

TEST_F(ServiceTime, aFlagIsSetWhereTheMiddlewareDoesNotReturn0) {
    int32_t returned = 0;
    const auto flag = [&] { return returned; };
    tv.on<&a_qortvapi_time_is_time_editable>(flag);
    tv.on<&a_qortvapi_time_is_time_zone_editable>(flag);
    tv.on<&a_qortvapi_time_is_time_offset_editable>(flag);
    tv.on<&a_qortvapi_time_has_received_tot>(flag);
    for (const int32_t value : {0, 1, 2, 256, -1}) {
        SCOPED_TRACE(value);
        returned = value;
        EXPECT_EQ(bool{impl->a_hidl_a_qortvapi_time_is_time_editable()}, value != 0);
        EXPECT_EQ(bool{impl->a_hidl_a_qortvapi_time_is_time_zone_editable()}, value != 0);
        EXPECT_EQ(bool{impl->a_hidl_a_qortvapi_time_is_time_offset_editable()}, value != 0);
        EXPECT_EQ(bool{impl->a_hidl_a_qortvapi_time_has_received_tot()}, value != 0);
    }
}

// What the broadcast says.

class ServiceTimeBroadcast : public ServiceTime {
  protected:
    /** What a client sends, with the two flags as the bytes that they are. */
    static HIDL_DT_BRDCST_STATUS_T status(uint8_t tdt, uint8_t tot) {
        HIDL_DT_BRDCST_STATUS_T status = {false, false, kSeconds, kLong, -5, 0x7edcba98};
        memcpy(reinterpret_cast<uint8_t*>(&status), &tdt, 1);
        memcpy(reinterpret_cast<uint8_t*>(&status) + 1, &tot, 1);
        return status;
    }

    using Statuses = Answers<HIDL_DT_BRDCST_STATUS_T, int64_t>;
    Statuses::All request(const HIDL_DT_BRDCST_STATUS_T& sent) const {
        return Statuses::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_time_get_brdcst_raw_data(sent, callback);
        });
    }
};

TEST_F(ServiceTimeBroadcast, reachesTheMiddlewareByItsBytes) {
    int calls = 0;
    tv.on<&a_qortvapi_time_get_brdcst_raw_data>([&](DT_BRDCST_STATUS_T* record) {
        ++calls;
        const auto* bytes = reinterpret_cast<const uint8_t*>(record);
        const auto at = [&](size_t offset, auto value) {
            memcpy(&value, bytes + offset, sizeof(value));
            return value;
        };
        EXPECT_EQ(at(0, uint32_t{}), 0x0000ff02u) << "two flags, two bytes of padding";
        EXPECT_EQ(at(4, int64_t{}), kSeconds);
        EXPECT_EQ(at(12, int64_t{}), kLong);
        EXPECT_EQ(at(20, int32_t{}), -5);
        EXPECT_EQ(at(24, int32_t{}), 0x7edcba98);
        return static_cast<uint32_t>(-7);
    });
    EXPECT_EQ(request(status(0x02, 0xff)),
              (Statuses::All{{{true, true, kSeconds, kLong, -5, 0x7edcba98}, kUnsigned}}));
    EXPECT_EQ(calls, 1);
}

TEST_F(ServiceTimeBroadcast, isAnsweredAsTheMiddlewareWritesIt) {
    struct Flags {
        uint8_t tdt;
        uint8_t tot;
    };
    for (const Flags& flags : {Flags{0, 0}, Flags{2, 255}, Flags{0, 1}, Flags{128, 0}}) {
        tv.on<&a_qortvapi_time_get_brdcst_raw_data>([=](DT_BRDCST_STATUS_T* record) {
            record->b_tdt_received = flags.tdt;
            record->b_tot_received = flags.tot;
            record->i8_utc = kLong;
            record->i8_next_change = kSeconds;
            record->i4_offset = 0x7fedcba9;
            record->i4_next_offset = -6;
            return 8;
        });
        const Statuses::All answers = request(status(1, 1));
        ASSERT_EQ(answers.size(), 1u);
        const auto& [answered, result] = answers[0];
        EXPECT_EQ(answered, (HIDL_DT_BRDCST_STATUS_T{flags.tdt != 0, flags.tot != 0, kLong,
                                                     kSeconds, 0x7fedcba9, -6}));
        uint8_t bytes[2];
        memcpy(bytes, &answered, sizeof(bytes));
        EXPECT_EQ(bytes[0], flags.tdt != 0 ? 1 : 0);
        EXPECT_EQ(bytes[1], flags.tot != 0 ? 1 : 0);
        EXPECT_EQ(result, 8);
    }
}

// Entry lines of all that do more than pass on.

struct EntryRow {
    const char* method;
    std::function<void(QorTvApiTimeImpl&)> call;
};

void PrintTo(const EntryRow& row, std::ostream* out) {
    *out << row.method;
}

// clang-format off
const EntryRow kEntryRows[] = {
    {"a_hidl_a_qortvapi_time_get_utc_time", [](auto& impl) { impl.a_hidl_a_qortvapi_time_get_utc_time(1, kIgnore); }},
    {"a_hidl_a_qortvapi_utc_sec_to_dtg", [](auto& impl) { impl.a_hidl_a_qortvapi_utc_sec_to_dtg(1, {}, kIgnore); }},
    {"a_hidl_a_qortvapi_time_get_broadcast_time_ex", [](auto& impl) { impl.a_hidl_a_qortvapi_time_get_broadcast_time_ex({}, kIgnore); }},
    {"a_hidl_a_qortvapi_time_convert", [](auto& impl) { impl.a_hidl_a_qortvapi_time_convert(1, {}, kIgnore); }},
    {"a_hidl_a_qortvapi_time_get_brdcst_raw_data", [](auto& impl) { impl.a_hidl_a_qortvapi_time_get_brdcst_raw_data({}, kIgnore); }},
    {"a_hidl_a_qortvapi_time_convert_millis_to_local_time", [](auto& impl) { impl.a_hidl_a_qortvapi_time_convert_millis_to_local_time(1, {}, kIgnore); }},
    {"a_hidl_a_qortvapi_dtg_to_sec", [](auto& impl) { impl.a_hidl_a_qortvapi_dtg_to_sec({}); }},
    {"a_hidl_a_qortvapi_time_convert_local_time_to_millis", [](auto& impl) { impl.a_hidl_a_qortvapi_time_convert_local_time_to_millis({}); }},
    {"a_hidl_c_dt_utc_sec_to_loc_dtg", [](auto& impl) { impl.a_hidl_c_dt_utc_sec_to_loc_dtg(1, {}, kIgnore); }},
    {"a_hidl_c_dt_get_utc", [](auto& impl) { impl.a_hidl_c_dt_get_utc(1, 2, kIgnore); }},
    {"a_hidl_c_dt_conv_utc_local", [](auto& impl) { impl.a_hidl_c_dt_conv_utc_local({}, kIgnore); }},
    {"a_hidl_c_dt_mjd_to_dtg", [](auto& impl) { impl.a_hidl_c_dt_mjd_to_dtg(1, kIgnore); }},
    {"a_hidl_c_dt_dtg_to_sec", [](auto& impl) { impl.a_hidl_c_dt_dtg_to_sec({}); }},
    {"a_hidl_c_dt_dtg_to_mjd_bcd", [](auto& impl) { impl.a_hidl_c_dt_dtg_to_mjd_bcd({}, kIgnore); }},
};
// clang-format on

class ServiceTimeEntryLine : public ServiceTime, public testing::WithParamInterface<EntryRow> {};

TEST_P(ServiceTimeEntryLine, isWrittenWhileDebuggingIsOn) {
    const EntryRow& row = GetParam();
    log.take();
    row.call(*impl);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine("QorTvApiTimeImpl(service)", row.method, "Enter.")}));
    mTvApiDebug = 0;
    row.call(*impl);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceTimeEntryLine, testing::ValuesIn(kEntryRows),
                         [](const auto& row) { return std::string(row.param.method); });

}  // namespace
