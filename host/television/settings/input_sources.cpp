#include "television/settings/input_sources.h"

#include <algorithm>
#include <iterator>

#include "middleware/inputsource.h"
#include "middleware/result_codes.h"
#include "middleware/screensaver.h"
#include "television/settings/config_items.h"

namespace television {
namespace {

constexpr uint32_t kWithSound = INPUT_SOURCE_HAS_AUDIO;
constexpr uint32_t kDigital = INPUT_SOURCE_HAS_AUDIO | INPUT_SOURCE_DIGITAL;
constexpr uint32_t kTuner = kDigital | INPUT_SOURCE_HAS_TUNER;

// Pictures of connected devices: width, height, thousandths of a frame a second, progressive.
constexpr VideoFormat kStandard = {720, 576, 25000, false};
constexpr VideoFormat kHigh = {1280, 720, 50000, true};
constexpr VideoFormat kComputer = {1024, 768, 60000, true};
constexpr VideoFormat kFull = {1920, 1080, 50000, true};

/** The labels of middleware/inputsource.h, by index. */
constexpr const char* kLabels[] = {"",          "Game",  "PC",     "DVD",  "Blu-ray", "Set-top box",
                                   "Satellite", "Cable", "Camera", "Music"};
static_assert(std::size(kLabels) == INPUT_LABEL_COUNT);

/** The name under which the core remembers a setting of a source. */
std::string nameOf(const InputSource& source, const char* setting) {
    return "input." + std::to_string(source.id) + "." + setting;
}

int32_t messageOf(const VideoFormat& picture) {
    return picture.width != 0 ? SCREENSAVER_MSG_NONE : SCREENSAVER_MSG_NO_SIGNAL;
}

int32_t setFlag(Core& core, const std::string& name, bool on) {
    core.remember(name, on ? "1" : "");
    return TV_OK;
}

}  // namespace

// clang-format off
const std::array<InputSource, 9> kInputSources = {{
        {INPUT_SOURCE_TV,        INPUT_DEVICE_TYPE_TV,        0, "TV",        kTuner,   nullptr,                     {}},
        {INPUT_SOURCE_AV,        INPUT_DEVICE_TYPE_AV,        0, "AV",        kWithSound,   "input.av.connected",        kStandard, INPUT_SOURCE_COMPONENT},
        {INPUT_SOURCE_SCART_1,   INPUT_DEVICE_TYPE_SCART,     0, "SCART 1",   kWithSound,   "input.scart1.connected",    kStandard},
        {INPUT_SOURCE_COMPONENT, INPUT_DEVICE_TYPE_COMPONENT, 0, "Component", kWithSound,   "input.component.connected", kHigh,     INPUT_SOURCE_AV},
        {INPUT_SOURCE_VGA,       INPUT_DEVICE_TYPE_VGA,       0, "VGA",       0,        "input.vga.connected",       kComputer},
        {INPUT_SOURCE_HDMI_1,    INPUT_DEVICE_TYPE_HDMI,      0, "HDMI 1",    kDigital, "input.hdmi1.connected",     kFull},
        {INPUT_SOURCE_HDMI_2,    INPUT_DEVICE_TYPE_HDMI,      1, "HDMI 2",    kDigital, "input.hdmi2.connected",     kFull},
        {INPUT_SOURCE_HDMI_3,    INPUT_DEVICE_TYPE_HDMI,      2, "HDMI 3",    kDigital, "input.hdmi3.connected",     kFull},
        {INPUT_SOURCE_HDMI_4,    INPUT_DEVICE_TYPE_HDMI,      3, "HDMI 4",    kDigital, "input.hdmi4.connected",     kFull},
}};
// clang-format on
static_assert(std::tuple_size_v<decltype(kInputSources)> == INPUT_SOURCE_COUNT);
static_assert(int{INPUT_SOURCE_TV} == int{kTelevisionSource});

const InputSource* inputSource(int32_t id) {
    return id >= 0 && id < INPUT_SOURCE_COUNT ? &kInputSources[static_cast<size_t>(id)] : nullptr;
}

bool inputsConflict(const InputSource& a, const InputSource& b) {
    if (a.id == b.id) return (a.flags & INPUT_SOURCE_HAS_TUNER) == 0;
    if (a.samePlug == b.id) return true;
    return a.type == INPUT_DEVICE_TYPE_HDMI && b.type == INPUT_DEVICE_TYPE_HDMI;
}

InputSources::InputSources(Core& core) : mCore(core) {
    mCore.onChange([this] { notifyChangedPictures(); });
}

bool InputSources::connected(const InputSource& source) const {
    if (source.connected == nullptr) return true;
    const ConfigItem* const item = configItem(source.connected);
    return item != nullptr && configNumber(mCore, *item) != 0;
}

std::string InputSources::name(const InputSource& source) const {
    std::string text = userName(source);
    if (text.empty()) text = kLabels[label(source)];
    return text.empty() ? source.name : text;
}

std::string InputSources::userName(const InputSource& source) const {
    return mCore.remembered(nameOf(source, "name"));
}

int32_t InputSources::setUserName(const InputSource& source, const std::string& name) {
    const bool good =
            name.size() <= INPUT_USER_NAME_MAX && std::all_of(name.begin(), name.end(), [](char c) {
                return static_cast<uint8_t>(c) >= 0x20 && c != 0x7F;
            });
    if (!good) return TV_INVALID_ARGUMENT;
    mCore.remember(nameOf(source, "name"), name);
    return TV_OK;
}

uint8_t InputSources::label(const InputSource& source) const {
    const int32_t label = mCore.rememberedNumber(nameOf(source, "label"), 0);
    return label > 0 && label < INPUT_LABEL_COUNT ? static_cast<uint8_t>(label) : uint8_t{0};
}

int32_t InputSources::setLabel(const InputSource& source, uint8_t label) {
    if (label >= INPUT_LABEL_COUNT) return TV_INVALID_ARGUMENT;
    mCore.rememberNumber(nameOf(source, "label"), label);
    return TV_OK;
}

bool InputSources::autodetect(const InputSource& source) const {
    return !mCore.remembered(nameOf(source, "autodetect")).empty();
}

int32_t InputSources::setAutodetect(const InputSource& source, bool on) {
    return setFlag(mCore, nameOf(source, "autodetect"), on);
}

bool InputSources::blockSet(const InputSource& source) const {
    return !mCore.remembered(nameOf(source, "block")).empty();
}

bool InputSources::blocked(const InputSource& source) const {
    return blockSet(source) && holds(mCore, {"lock.inputs", 1});
}

int32_t InputSources::setBlock(const InputSource& source, bool on) {
    return setFlag(mCore, nameOf(source, "block"), on);
}

/** Returns empty while the window shows the television. */
std::optional<InputSources::External> InputSources::externalIn(size_t window) const {
    const auto [id, stopped] = mCore.read([&](const ChannelLists& lists) {
        return std::make_pair(lists.source[window], lists.stopped[window]);
    });
    if (id == kTelevisionSource) return std::nullopt;
    const InputSource& source = *inputSource(id);
    return External{id, !stopped && connected(source) ? source.picture : VideoFormat()};
}

VideoFormat InputSources::pictureIn(size_t window) const {
    if (const auto external = externalIn(window)) return external->picture;
    return videoFormatOf(mCore.playing(window));
}

int32_t InputSources::screenMessage() const {
    if (const auto external = externalIn(0)) return messageOf(external->picture);
    return screenSaverMessage(mCore.playing(0));
}

/** Notifies the handlers of windows whose picture comes from another source than the television and
 * has changed. Changes of the television's picture are notified where its channels are selected. */
void InputSources::notifyChangedPictures() {
    for (size_t window = 0; window < kWindowCount; ++window) {
        const auto external = externalIn(window);
        std::optional<std::pair<uint8_t, uint32_t>> now;
        if (external) now.emplace(external->source, external->picture.width);
        const std::lock_guard<std::mutex> lock(mMutex);
        if (mNotified[window] == now) continue;
        mNotified[window] = now;
        if (!external) continue;
        mCore.notifier.post(detectionNotification(external->picture, window));
        if (window != 0) continue;
        mCore.notifier.post({registration<&a_qortvapi_screensaver_register_msg_callback>(),
                             messageOf(external->picture),
                             {}});
    }
}

}  // namespace television
