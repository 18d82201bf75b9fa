/** What the viewers of a day of television and the test that sends them out agree on. */
#pragma once

#include <cstdint>

/** Announced to everybody as an application's own event of recordings. */
enum class Hour : uint32_t { kBeforeDawn = 0, kMorning = 1, kEvening = 2, kNight = 3 };

/** The item of the configuration that a viewer changes: 0 to 100. */
constexpr char kSetting[] = "picture.brightness";
constexpr int16_t kSettingGroup = 1;
