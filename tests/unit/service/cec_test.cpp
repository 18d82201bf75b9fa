/** The eARC methods, with a hardware abstraction library of the test's own. */
#include "QorTvApiCec.h"
#include "qral/qral.h"
#include "support/domain_fixture.h"

namespace {

using Calls = std::vector<std::string>;

/** The results of the library's next calls, and the calls that it received. */
struct FakeLibrary {
    int32_t init_result = 0;
    int32_t result = 0;
    uint32_t value = 0;
    Calls calls;
};
FakeLibrary gLibrary;

}  // namespace

int32_t QRAL_Init() {
    gLibrary.calls.push_back("init");
    return gLibrary.init_result;
}

int32_t QRCEC_GetEARCCaps(uint32_t* pui4_caps) {
    gLibrary.calls.push_back("caps");
    EXPECT_EQ(*pui4_caps, 0u);
    *pui4_caps = gLibrary.value;
    return gLibrary.result;
}

int32_t QRCEC_SetEARCEnable(bool b_enabled) {
    gLibrary.calls.push_back(b_enabled ? "enable" : "disable");
    return gLibrary.result;
}

int32_t QRCEC_GetEARCStatus(int32_t i4_port, uint8_t* pui1_status) {
    gLibrary.calls.push_back("status of " + std::to_string(i4_port));
    EXPECT_EQ(*pui1_status, 0);
    *pui1_status = static_cast<uint8_t>(gLibrary.value);
    return gLibrary.result;
}

namespace {

/** A method with the arguments of one call. */
struct Row {
    const char* name;
    const char* method;
    Calls calls;          // without a failure
    std::string failure;  // line where the second of them fails
    std::string trace;    // line of a success, without the number at its end
    int32_t failed;       // result
    bool traces_failure;  // the line of a success is written after a failure, too
    int32_t (*call)(QorTvApiCec&);
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

int32_t setEnabled(QorTvApiCec& impl, bool enabled) {
    return impl.a_hidl_a_qortvapi_set_earc_enable(enabled);
}
int32_t statusOf(QorTvApiCec& impl, int32_t port) {
    const bool active = impl.a_hidl_a_qortvapi_get_earc_status(port);
    return active ? 1 : 0;
}

const char kGetCaps[] = "a_hidl_a_qortvapi_get_earc_caps";
const char kSet[] = "a_hidl_a_qortvapi_set_earc_enable";
const char kGetStatus[] = "a_hidl_a_qortvapi_get_earc_status";
const std::string kSetTrace = std::string(kSet) + " i4_ret=";

const Row kRows[] = {
        {"caps",
         kGetCaps,
         {"init", "caps"},
         "QRCEC_GetEARCCaps failed",
         "eARC caps= ",
         0,
         false,
         [](QorTvApiCec& impl) {
             const bool capable = impl.a_hidl_a_qortvapi_get_earc_caps();
             return capable ? 1 : 0;
         }},
        {"enable",
         kSet,
         {"init", "enable"},
         "QRCEC_SetEARCEnable failed",
         kSetTrace,
         -1,
         true,
         [](QorTvApiCec& impl) { return setEnabled(impl, true); }},
        {"disable",
         kSet,
         {"init", "disable"},
         "QRCEC_SetEARCEnable failed",
         kSetTrace,
         -1,
         true,
         [](QorTvApiCec& impl) { return setEnabled(impl, false); }},
        // The line of the capability.
        {"status",
         kGetStatus,
         {"init", "status of 3"},
         "QRCEC_GetEARCCaps failed",
         "eARC Status= ",
         0,
         false,
         [](QorTvApiCec& impl) { return statusOf(impl, 3); }},
        {"status_of_no_port",
         kGetStatus,
         {"init", "status of -2147483648"},
         "QRCEC_GetEARCCaps failed",
         "eARC Status= ",
         0,
         false,
         [](QorTvApiCec& impl) { return statusOf(impl, INT32_MIN); }},
};

class ServiceCec : public DomainTest<QorTvApiCec>, public testing::WithParamInterface<Row> {
  protected:
    ServiceCec() : DomainTest("QorTvApiCec(service)") { gLibrary = {}; }

    /** The call returns `result` after `calls` of the library. */
    void expectCall(int32_t result, const Calls& calls) {
        gLibrary.calls.clear();
        EXPECT_EQ(GetParam().call(*impl), result);
        EXPECT_EQ(gLibrary.calls, calls);
    }
};

TEST_P(ServiceCec, initialisesTheLibraryEveryTime) {
    const Row& row = GetParam();
    gLibrary.value = 1;
    const int32_t result = row.failed == 0 ? 1 : 0;
    const std::string trace = row.trace + std::to_string(result);
    expectLines(row.method, {trace}, [&] { expectCall(result, row.calls); });
}

TEST_P(ServiceCec, triesAgainAfterAFailedInitialisation) {
    const Row& row = GetParam();
    gLibrary.value = 1;
    for (const int32_t failure : {-1, 1}) {
        gLibrary.init_result = failure;
        const std::string line = "QRAL_Init failed";
        expectLines(row.method, {line}, [&] { expectCall(row.failed, {"init"}); }, {line});
        gLibrary.init_result = 0;
        expectCall(row.failed == 0 ? 1 : 0, row.calls);
    }
}

TEST_P(ServiceCec, keepsTheLibrarysCodesToItself) {
    const Row& row = GetParam();
    gLibrary.value = 1;
    for (const int32_t failure : {-7, 7}) {
        gLibrary.result = failure;
        Texts lines = {row.failure};
        if (row.traces_failure) lines.push_back(row.trace + "-1");
        expectLines(row.method, lines, [&] { expectCall(row.failed, row.calls); }, {row.failure});
    }
}

INSTANTIATE_TEST_SUITE_P(, ServiceCec, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

class ServiceCecValues : public DomainTest<QorTvApiCec> {
  protected:
    ServiceCecValues() : DomainTest("QorTvApiCec(service)") { gLibrary = {}; }
};

TEST_F(ServiceCecValues, otherThanOneAreFalseAndNoFailure) {
    for (const uint32_t value : {0u, 1u, 2u, 0xffu, 0x101u, 0xffffffffu}) {
        gLibrary.value = value;
        const std::string caps = std::to_string(static_cast<int32_t>(value));
        expectLines(kGetCaps, {"eARC caps= " + caps}, [&] {
            const bool capable = impl->a_hidl_a_qortvapi_get_earc_caps();
            EXPECT_EQ(capable, value == 1) << value;
        });
        const std::string status = std::to_string(value & 0xff);
        expectLines(kGetStatus, {"eARC Status= " + status},
                    [&] { EXPECT_EQ(statusOf(*impl, 1), (value & 0xff) == 1 ? 1 : 0) << value; });
    }
}

using ServiceCecConstructor = ServiceCecValues;

TEST_F(ServiceCecConstructor, logsNothing) {
    log.take();
    const sp<QorTvApiCec> another = new QorTvApiCec();
    EXPECT_TRUE(log.take().empty());
}

}  // namespace
