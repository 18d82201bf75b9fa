// integration_answering_client: an application that the service asks questions. Prints the calls
// that it receives. Its arguments say how it answers:
//
//     android ATTRIBUTE DATA   answers queryAndroid
//     mime SUPPORTED RESULT    answers isMheg5MimeTypeSupported
//     silent                   never calls a result callback
//     dies                     kills itself before it answers
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>

#include "qortv/connect.h"
#include "support/recording_client.h"

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    arguments.resize(3);
    const sp<RecordingClient> client = new RecordingClient();
    if (arguments[0] == "android") {
        client->answerQuery = [=](const auto& answer) {
            const std::vector<uint8_t> data(arguments[2].begin(), arguments[2].end());
            answer(std::stoi(arguments[1]), data);
        };
    } else if (arguments[0] == "mime") {
        client->answerMimeType = [=](const auto& answer) {
            answer(arguments[1] == "1", std::stoi(arguments[2]));
        };
    } else if (arguments[0] == "dies") {
        client->onCall = [] { raise(SIGKILL); };
    }
    client->onCall = [&, more = client->onCall] {
        std::printf("%s\n", client->calls().back().c_str());
        std::fflush(stdout);
        if (more) more();
    };
    const auto service = qortv::connect<IQorTvApi>();
    qortv::check(service->setCallback(client), "setCallback");
    std::printf("ready\n");
    std::fflush(stdout);
    for (;;) pause();
}
