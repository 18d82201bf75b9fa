// integration_asking_service: the service with a middleware that a test plays. It reads a command
// from each line of the pipe `ask` in the middleware's folder, does it on its main thread, which is
// the middleware's, and writes what came of it on a line of standard output.
//
//     android        asks the clients; the attribute and the data that came back, or "99 " if none
//     mime           asks whether they support a MIME type; the flag, or "9" if nobody knows
//     wakelock N ID  takes (N other than 0) or drops a wake lock; "done"
//     clients        the cookies of the clients in the order in which they are asked
#include <hidl/HidlTransportSupport.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

#include "QorTvApiImpl.h"
#include "middleware/highlevel.h"
#include "middleware/mheg5.h"
#include "middleware/svctx.h"
#include "middleware/wakelock.h"
#include "startup.h"
#include "television/switchboard/switchboard.h"
#include "vendor_tmp.h"

namespace {

using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiImpl;

class Middleware {
  public:
    Middleware() {
        mBoard.on<&a_qortvapi_highlevel_register_android_responser>([this](auto handler, void*) {
            mAndroid = handler;
            return 0;
        });
        mBoard.on<&a_qortvapi_mheg5_reg_is_mime_type_support_fct>(
                [this](int32_t, auto handler, void*) {
                    mMimeType = handler;
                    return 0;
                });
        mBoard.on<&a_qortvapi_wakelock_reg_callback>([this](auto handler, void*) {
            mWakeLock = handler;
            return 0;
        });
        // Writes into what it is given, which is the client's own message.
        mBoard.on<&c_svctx_set_conn_attr>([](uint32_t, uint32_t, uint32_t length, void* data) {
            for (uint32_t i = 0; i < length; ++i) ++static_cast<uint8_t*>(data)[i];
            return 7;
        });
    }

    std::string perform(const std::string& line) const {
        std::istringstream words(line);
        std::string command;
        words >> command;
        if (command == "android") return askAndroid();
        if (command == "mime") return askMimeType();
        if (command == "clients") return clients();
        if (command != "wakelock") return "no such command: " + line;
        int acquire = 0;
        std::string id;
        words >> acquire >> id;
        mWakeLock(nullptr, static_cast<uint8_t>(acquire), id.c_str());
        return "done";
    }

  private:
    std::string askAndroid() const {
        uint32_t result = 99;
        std::array<char, 64> buffer = {};
        mAndroid(21, nullptr, 22, &result, buffer.data(), buffer.size());
        return std::to_string(result) + " " + buffer.data();
    }

    std::string askMimeType() const {
        uint8_t flag = 9;
        mMimeType("text/html", &flag, nullptr, 23);
        return std::to_string(flag);
    }

    static std::string clients() {
        const std::lock_guard lock(QorTvApiImpl::getCallbackMutex());
        std::string cookies;
        for (const auto& entry : QorTvApiImpl::getCallbackHandlers()) {
            cookies += std::to_string(entry.first) + " ";
        }
        return cookies;
    }

    switchboard::Switchboard mBoard;
    a_qortvapi_highlevel_android_responser_fct mAndroid = nullptr;
    a_qortvapi_mheg5_is_mime_type_support_fct mMimeType = nullptr;
    a_qortvapi_wakelock_nfy_fct mWakeLock = nullptr;
};

}  // namespace

int main() {
    const Middleware middleware;
    const auto services = vendor::corvanta::tv::qortvapi::V1_0::implementation::startServices();
    std::thread([] { android::hardware::joinRpcThreadpool(); }).detach();
    // Opened for both directions: the pipe does not end when a test closes its side.
    std::fstream commands(std::string(qortv_vendor_tmp()) + "/ask", std::ios::in | std::ios::out);
    for (std::string line; std::getline(commands, line);) {
        std::cout << middleware.perform(line) << std::endl;
    }
    return 1;
}
