// Logs what the test of the log on Linux looks for; the argument "threads" makes it many lines.
#define LOG_TAG "probe"

#include <android-base/logging.h>
#include <android/log.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

int main(int argc, char** argv) {
    if (argc > 1 && strcmp(argv[1], "threads") == 0) {
        std::vector<std::thread> threads;
        for (char letter : {'a', 'b', 'c', 'd'}) {
            threads.emplace_back([letter] {
                const std::string text(500, letter);
                for (int i = 0; i < 200; ++i) {
                    __android_log_print(ANDROID_LOG_ERROR, "probe", "%s", text.c_str());
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
        return 0;
    }
    __android_log_print(ANDROID_LOG_VERBOSE, "probe", "verbose");
    __android_log_print(ANDROID_LOG_DEBUG, "probe", "debug\n");
    __android_log_print(ANDROID_LOG_INFO, "probe", "two\nlines\n\n");
    LOG(INFO) << "from the base library";
    LOG(DEBUG) << "debug of the base library";
    __android_log_print(ANDROID_LOG_WARN, "probe", "warn");
    __android_log_print(ANDROID_LOG_ERROR, "probe", "%s", "");
    return 0;
}
