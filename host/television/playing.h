/** What plays in a window, and what a viewer sees and hears of it. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lists.h"
#include "notifier.h"

namespace television {

/** Window 0 is the main one, window 1 the sub one. */
constexpr size_t kWindowCount = 2;

/** The service that is selected in a window, with all that is known of it. */
struct Playing {
    SVL_REC_T service;
    TSL_REC_T multiplex;
    ServiceTracks tracks;  ///< from the record as far as it tells, until the stream was read

    bool hasVideo() const { return service.ui2_video_pid != kNoPid; }
    bool hasAudio() const { return service.ui2_audio_pid != kNoPid; }
};

/** The streams' sound is not decoded: what its encoders usually give. */
constexpr uint32_t kAudioSampleRate = 48000;
constexpr uint32_t kAudioChannels = 2;

/** What the tuner of a window is at: BROADCAST_TUNING_… and BROADCAST_TUNING_ERROR_…. */
struct Tuning {
    uint32_t status = 0;
    uint32_t error = 0;
};

/** Empty while nothing plays there. */
std::optional<Playing> playingIn(const ChannelLists& lists, size_t window);

/** The format that a service's type stands for; the streams' pictures are not decoded. */
struct VideoFormat {
    uint32_t width = 0;  ///< 0: no picture
    uint32_t height = 0;
    uint32_t frameRate = 0;  ///< thousandths of a frame a second
    bool progressive = false;
};
VideoFormat videoFormatOf(const Playing& playing);
VideoFormat videoFormatOf(const std::optional<Playing>& playing);

/** AUDIO_ENCODING_… of a track. */
uint32_t audioEncodingOf(const AudioTrack& track);

/** The message that is on the screen while that plays: SCREENSAVER_MSG_…. */
int32_t screenSaverMessage(const std::optional<Playing>& playing);

/** Whether a viewer would see and hear the same. */
bool looksTheSame(const std::optional<Playing>& a, const std::optional<Playing>& b);

/** The notifications of the main window about what its service brings: banner, audio, subtitles,
 * video, screen saver. */
void addMainWindowEvents(std::vector<Event>& events, const std::optional<Playing>& playing);

/** The notifications of a window whose service has just been selected, in order. `tuning`: how that
 * ended. */
void addSelectionEvents(std::vector<Event>& events, const ChannelLists& lists, size_t window,
                        const Tuning& tuning);

/** Tells the video plane of a window whether it has a picture, and its size. */
Event detectionEvent(const VideoFormat& picture, size_t window);

}  // namespace television
