/** Power control: reasons, input lines and the key that woke the set. */
#include <cstring>

#include "middleware/pcl.h"
#include "support/core_contexts_fixture.h"

namespace {

class ServicePowerControl : public CoreContextsTest {
  protected:
    using Reason = std::tuple<uint32_t, std::vector<uint8_t>, int32_t>;

    /** What `method` answers where the middleware's `Function` gives `reason`, `data`, `result`. */
    template <auto Function, typename Method>
    Reason reasonFrom(Method method, uint32_t reason, uint32_t data, int32_t result) {
        tv.on<Function>([=](uint32_t* its_reason, uint32_t* its_data) {
            EXPECT_EQ(*its_reason, 0u);
            EXPECT_EQ(*its_data, 0u);
            if (result >= 0) {
                *its_reason = reason;
                *its_data = data;
            }
            return result;
        });
        std::vector<Reason> answers;
        (*impl.*
         method)([&](auto its_reason, const hidl_vec<uint8_t>& its_data, int32_t its_result) {
            answers.emplace_back(static_cast<uint32_t>(its_reason), std::vector<uint8_t>(its_data),
                                 its_result);
        });
        EXPECT_EQ(answers.size(), 1u);
        return answers.at(0);
    }

    /** A plain bridge for a reason, with its debug line. */
    template <auto Function, typename Method>
    void expectPassedOn(Method method, const std::string& name) {
        const std::vector<uint8_t> data = {4, 3, 2, 0xf1};
        expectDebugLines({debugLine("QorTvApiImpl(service)", name, name)}, [&] {
            EXPECT_EQ(reasonFrom<Function>(method, 50, 0xf1020304, 7), Reason(50, data, 7));
        });
        EXPECT_EQ(reasonFrom<Function>(method, 0xfffffffe, 0xf1020304, 7),
                  Reason(0xfffffffe, data, 7));
        EXPECT_EQ(reasonFrom<Function>(method, 1, 2, -6), Reason(0, {0, 0, 0, 0}, -6));
    }
};

TEST_F(ServicePowerControl, reasonsPassUnchanged) {
    expectPassedOn<&c_pcl_get_wakeup_reason>(&QorTvApiImpl::a_hidl_c_pcl_get_wakeup_reason,
                                             "a_hidl_c_pcl_get_wakeup_reason");
    expectPassedOn<&c_pcl_get_power_down_reason>(&QorTvApiImpl::a_hidl_c_pcl_get_power_down_reason,
                                                 "a_hidl_c_pcl_get_power_down_reason");
}

TEST_F(ServicePowerControl, applicationsAreToldTheReasonsThatTheyKnow) {
    const auto translated = [&](uint32_t reason) {
        const Reason answer = reasonFrom<&a_qortvapi_pcl_get_wakeup_reason>(
                &QorTvApiImpl::a_hidl_a_qortvapi_pcl_get_wakeup_reason, reason, 0x01020304, 7);
        EXPECT_EQ(std::get<1>(answer), (std::vector<uint8_t>{4, 3, 2, 1}));
        EXPECT_EQ(std::get<2>(answer), 7);
        return std::get<0>(answer);
    };
    EXPECT_EQ(translated(0), 0u);
    for (uint32_t reason = 1; reason <= 44; ++reason) EXPECT_EQ(translated(reason), reason);
    for (uint32_t reason = 45; reason <= 59; ++reason) EXPECT_EQ(translated(reason), 0u) << reason;
    for (uint32_t reason = 60; reason <= 80; ++reason) EXPECT_EQ(translated(reason), reason);
    for (const uint32_t reason : {81u, 100u, 0x7fffffffu, 0x80000001u, 0xffffffffu}) {
        EXPECT_EQ(translated(reason), 0u) << reason;
    }
    const char* name = "a_hidl_a_qortvapi_pcl_get_wakeup_reason";
    expectDebugLines({debugLine("QorTvApiImpl(service)", name, name)}, [&] { translated(1); });
}

TEST_F(ServicePowerControl, reasonsAreSetWithTheClientsBytes) {
    const hidl_vec<uint8_t> data = {1, 2, 3, 4};
    const auto expect = [&](uint32_t reason, const void* its_data) {
        EXPECT_EQ(reason, 0xfffffffeu);
        EXPECT_EQ(its_data, data.data());
        return -3;
    };
    tv.on<&c_pcl_set_wakeup_reason>(expect);
    tv.on<&c_pcl_set_power_down_reason>(expect);
    EXPECT_EQ(int32_t{impl->a_hidl_c_pcl_set_wakeup_reason(
                      static_cast<HIDL_PCL_WAKE_UP_REASON_T>(0xfffffffe), data)},
              -3);
    EXPECT_EQ(int32_t{impl->a_hidl_c_pcl_set_power_down_reason(
                      static_cast<HIDL_PCL_POWER_DOWN_REASON_T>(0xfffffffe), data)},
              -3);
}

TEST_F(ServicePowerControl, inputLineIsRead) {
    for (const bool succeeds : {true, false}) {
        tv.on<&c_pcl_get_gpio>([=](uint32_t id, PCL_GPIO_MODE_T mode, PCL_GPIO_STATUS_T* status) {
            EXPECT_EQ(id, 0xf0000001u);
            EXPECT_EQ(mode, 0xf0000002u);
            EXPECT_EQ(*status, 0u);
            if (!succeeds) return -3;
            *status = 0xf0000003;
            return 4;
        });
        int answers = 0;
        impl->a_hidl_c_pcl_get_gpio(0xf0000001, static_cast<HIDL_PCL_GPIO_MODE_T>(0xf0000002),
                                    [&](HIDL_PCL_GPIO_STATUS_T status, int32_t result) {
                                        ++answers;
                                        EXPECT_EQ(static_cast<uint32_t>(status),
                                                  succeeds ? 0xf0000003 : 0);
                                        EXPECT_EQ(result, succeeds ? 4 : -3);
                                    });
        EXPECT_EQ(answers, 1);
    }
}

TEST_F(ServicePowerControl, outputLineIsSet) {
    tv.on<&c_pcl_set_gpio>([](uint32_t id, PCL_GPIO_STATUS_T status) {
        EXPECT_EQ(id, 0xf0000001u);
        EXPECT_EQ(status, 0xf0000002u);
        return -3;
    });
    EXPECT_EQ(int32_t{impl->a_hidl_c_pcl_set_gpio(0xf0000001,
                                                  static_cast<HIDL_PCL_GPIO_STATUS_T>(0xf0000002))},
              -3);
}

TEST_F(ServicePowerControl, monitorControlIsAWordAndAByte) {
    tv.on<&c_pcl_set_gpio_monitor_ctrl_ex>([](const PCL_GPIO_MONITOR_CTRL_EX_T* control) {
        const uint8_t expected[8] = {0x01, 0xf4, 0xf3, 0xf2, 0x81, 0, 0, 0};
        EXPECT_EQ(memcmp(control, expected, sizeof(expected)), 0);
        return -3;
    });
    HIDL_PCL_GPIO_MONITOR_CTRL_EX_T control;
    memset(static_cast<void*>(&control), 0xff, sizeof(control));
    control.id = 0xf2f3f401;
    control.polarity = 0x81;
    EXPECT_EQ(int32_t{impl->a_hidl_c_pcl_set_gpio_monitor_ctrl_ex(control)}, -3);
}

TEST_F(ServicePowerControl, wakeupKeyIsAnswered) {
    for (const bool succeeds : {true, false}) {
        tv.on<&c_pcl_get_wakeup_irkey>([=](PCL_WAKEUP_KEY_T* key) {
            EXPECT_EQ(key->ui4_key_code, 0u);
            EXPECT_EQ(key->ui4_key_data, 0u);
            if (!succeeds) return -3;
            *key = {0xf0000001, 0xf0000002};
            return 4;
        });
        int answers = 0;
        impl->a_hidl_c_pcl_get_wakeup_irkey([&](const HIDL_PCL_WAKEUP_KEY_T& key, int32_t result) {
            ++answers;
            EXPECT_EQ(key.key_code, succeeds ? 0xf0000001 : 0);
            EXPECT_EQ(key.key_data, succeeds ? 0xf0000002 : 0);
            EXPECT_EQ(result, succeeds ? 4 : -3);
        });
        EXPECT_EQ(answers, 1);
    }
}

}  // namespace
