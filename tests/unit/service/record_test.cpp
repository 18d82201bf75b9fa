/** The methods of the record interface that are no plain bridges. */
#include <cstring>

#include "QorTvApiRecordImpl.h"
#include "middleware/record.h"
#include "support/core_fixture.h"
#include "support/short_memory.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Text = Answers<std::string, int32_t>;

/** `size` bytes, no two neighbours the same. */
Bytes pattern(size_t size, uint8_t first) {
    Bytes bytes(size);
    for (size_t i = 0; i < size; ++i) bytes[i] = first + 7 * i;
    return bytes;
}

template <typename Record>
Bytes bytesOf(const Record& record) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&record);
    return Bytes(bytes, bytes + sizeof(record));
}

/** The methods write no line. */
class ServiceRecord : public ServiceTest {
  protected:
    ServiceRecord() { log.take(); }
    ~ServiceRecord() override { EXPECT_EQ(log.take(), std::vector<LogLine>{}); }

    Text::All fileName(uint32_t length) const {
        return Text::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_record_pvr_get_recording_file_name(0xf1f2f3f4, length,
                                                                       callback);
        });
    }
    Text::All disk(uint32_t length) const {
        return Text::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_record_pvr_get_disk(0xf1f2f3f4, length, callback);
        });
    }

    const sp<QorTvApiRecordImpl> impl = new QorTvApiRecordImpl();
};

using ServiceRecordDeathTest = ServiceRecord;

TEST_F(ServiceRecord, aFileNameHas256BytesWhateverTheLengthSays) {
    constexpr size_t kRoom = 256;
    for (const uint32_t length : {0u, 5u, 256u, 0xffffffffu}) {
        for (const std::string& written :
             {std::string(), std::string("a.ts"), std::string(kRoom, 'x')}) {
            tv.on<&a_qortvapi_record_pvr_get_recording_file_name>(
                    [&](uint32_t recording, char* name, uint32_t its_length) {
                        EXPECT_EQ(recording, 0xf1f2f3f4);
                        EXPECT_EQ(its_length, length);
                        EXPECT_EQ(std::string(name, kRoom), std::string(kRoom, '\0'));
                        written.copy(name, written.size());
                        return -3;
                    });
            EXPECT_EQ(fileName(length), (Text::All{{written, -3}}));
        }
    }
}

TEST_F(ServiceRecord, aRegisterFileIsCheckedByReference) {
    for (const bool registered : {true, false}) {
        tv.on<&a_qortvapi_record_check_register_file>([&](const char* path, bool* its_registered) {
            EXPECT_STREQ(path, "/media/disk");
            EXPECT_EQ(*its_registered, registered);
            *its_registered = !registered;
            return -8;
        });
        EXPECT_EQ(impl->a_hidl_a_qortvapi_record_check_register_file("/media/disk", registered),
                  -8);
    }
}

TEST_F(ServiceRecord, aDiskIsATextOfTheLengthAskedFor) {
    for (const uint32_t length : {0u, 1u, 12u, 4096u}) {
        for (const uint32_t written : {0u, length / 2, length}) {
            tv.on<&a_qortvapi_record_pvr_get_disk>(
                    [&](uint32_t disk, char* path, uint32_t its_length) {
                        EXPECT_EQ(disk, 0xf1f2f3f4);
                        EXPECT_EQ(its_length, length);
                        EXPECT_EQ(std::string(path, length + 1), std::string(length + 1, '\0'));
                        memset(path, 'x', written);
                        return -3;
                    });
            EXPECT_EQ(disk(length), (Text::All{{std::string(written, 'x'), -3}}));
        }
    }
}

TEST_F(ServiceRecordDeathTest, aDiskNeedsMemory) {
    const std::string words = "a_hidl_a_qortvapi_record_pvr_get_disk: no memory for ";
    EXPECT_DEATH(disk(0xffffffff), words + "4294967296 elements of 1 bytes");
    EXPECT_DEATH(disk(0xfffffffe), words + "4294967295 elements of 1 bytes");
    const ShortMemory memory(0);
    EXPECT_DEATH(disk(12), words + "13 elements of 1 bytes");
}

TEST_F(ServiceRecord, ofAScheduleTheFirst248BytesCount) {
    for (const size_t sent : {0, 1, 247, 248, 249, 4096}) {
        SCOPED_TRACE(sent);
        const Bytes record = pattern(sent, 0x81);
        Bytes expected = record;
        expected.resize(248);
        tv.on<&a_qortvapi_set_schedule_record>(
                [&](const SCHEDULE_RECORD_T* schedule, int32_t operation) {
                    EXPECT_EQ(bytesOf(*schedule), expected);
                    EXPECT_EQ(operation, -2);
                    return 17;
                });
        EXPECT_EQ(impl->a_hidl_a_qortvapi_set_schedule_record(record, -2), 17);
    }
}

TEST_F(ServiceRecord, aScheduleIsReadWholeAlsoWhereItFails) {
    for (const uint8_t written : {0x00, 0xf1}) {
        tv.on<&a_qortvapi_get_schedule_record>([&](int32_t index, SCHEDULE_RECORD_T* schedule) {
            EXPECT_EQ(index, -7);
            EXPECT_EQ(bytesOf(*schedule), Bytes(248));
            memset(schedule, written, sizeof(*schedule));
            return -6;
        });
        using Schedules = Answers<Bytes, int32_t>;
        EXPECT_EQ(Schedules::of([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_get_schedule_record(-7, callback);
                  }),
                  (Schedules::All{{Bytes(248, written), -6}}));
    }
}

TEST_F(ServiceRecord, sourcesOfConflictAreZeroBehindTheirBytes) {
    for (const size_t sent : {0, 1, 71, 72}) {
        for (const size_t other_sent : {0, 30, 72}) {
            for (const int32_t result : {0, 1, 2, -1}) {
                const Bytes source = pattern(sent, 0x81);
                const Bytes other_source = pattern(other_sent, 0x42);
                tv.on<&a_qortvapi_record_pvr_chk_src_conflict>(
                        [&](const RECORD_SOURCE_T* its_source, const RECORD_SOURCE_T* its_other) {
                            Bytes expected = source;
                            expected.resize(72);
                            EXPECT_EQ(bytesOf(*its_source), expected);
                            expected = other_source;
                            expected.resize(72);
                            EXPECT_EQ(bytesOf(*its_other), expected);
                            return result;
                        });
                EXPECT_EQ(impl->a_hidl_a_qortvapi_record_pvr_chk_src_conflict(source, other_source),
                          result != 0);
            }
        }
    }
}

TEST_F(ServiceRecordDeathTest, aSourceOfMoreThan72BytesEndsTheProcess) {
    const std::string words =
            "a_hidl_a_qortvapi_record_pvr_chk_src_conflict: bounded copy of 73 bytes into a block "
            "of 72";
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_record_pvr_chk_src_conflict(Bytes(73), Bytes(72)), words);
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_record_pvr_chk_src_conflict(Bytes(72), Bytes(73)), words);
}

TEST_F(ServiceRecord, aDiskIsSetWithItsParameters) {
    HIDL_RECORD_DEV_PARAM_T parameter{};
    parameter.size = 0xf1f2f3f4f5f6f7f8;
    parameter.timeshift_size = 0xe1e2e3e4e5e6e7e8;
    parameter.flags = 0xd1d2d3d4;
    tv.on<&a_qortvapi_record_pvr_set_disk>(
            [&](uint32_t disk, const char* path, const RECORD_DEV_PARAM_T* its_parameter) {
                EXPECT_EQ(disk, 0xc1c2c3c4);
                EXPECT_STREQ(path, "/media/disk");
                Bytes expected(20);
                memcpy(&expected[0], &parameter.size, 8);
                memcpy(&expected[8], &parameter.timeshift_size, 8);
                memcpy(&expected[16], &parameter.flags, 4);
                EXPECT_EQ(bytesOf(*its_parameter), expected);
                return -4;
            });
    EXPECT_EQ(impl->a_hidl_a_qortvapi_record_pvr_set_disk(0xc1c2c3c4, "/media/disk", parameter),
              -4);
}

}  // namespace
