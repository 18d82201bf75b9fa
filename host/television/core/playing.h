/** The service that plays in a window, its picture and sound, and the notifications about it. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "television/core/notification.h"
#include "television/lists/lists.h"

namespace television {

/** Window 0 is the main one, window 1 the sub one. */
constexpr size_t kWindowCount = 2;

/** The service that is selected in a window, and its multiplex and tracks. */
struct Playing {
    SVL_REC_T service;
    TSL_REC_T multiplex;
    ServiceTracks tracks;  ///< of the service's record, one audio track at most, until its stream
                           ///< was read

    bool hasVideo() const { return service.ui2_video_pid != kNoPid; }
    bool hasAudio() const { return service.ui2_audio_pid != kNoPid; }
};

// The usual format of broadcast sound; the streams' sound is not decoded.
constexpr uint32_t kAudioSampleRate = 48000;  ///< samples a second
constexpr uint32_t kAudioChannels = 2;

/** The state of a window's tuner. */
struct Tuning {
    uint32_t status = 0;  ///< BROADCAST_TUNING_…
    uint32_t error = 0;   ///< BROADCAST_TUNING_ERROR_…
};

/** What plays in a window; empty while nothing does. */
std::optional<Playing> playingIn(const ChannelLists& lists, size_t window);

/** A picture's format, derived from the service's type: the streams' pictures are not decoded. */
struct VideoFormat {
    uint32_t width = 0;  ///< 0: no picture
    uint32_t height = 0;
    uint32_t frameRate = 0;  ///< in thousandths of a frame per second
    bool progressive = false;
};
VideoFormat videoFormatOf(const Playing& playing);
VideoFormat videoFormatOf(const std::optional<Playing>& playing);

/** The encoding of a track, AUDIO_ENCODING_…. */
uint32_t audioEncodingOf(const AudioTrack& track);

/** The message that the screen shows in place of a picture, SCREENSAVER_MSG_…. */
int32_t screenSaverMessage(const std::optional<Playing>& playing);

/** Whether a viewer sees and hears no difference: service record, network name and tracks are the
 * same. */
bool looksTheSame(const std::optional<Playing>& a, const std::optional<Playing>& b);

/** Adds the notifications about banner, audio, subtitles, video and screen saver of the main
 * window, in which `playing` plays. */
void addMainWindowNotifications(std::vector<Notification>& notifications,
                                const std::optional<Playing>& playing);

/** Adds all notifications of a window whose service has just been selected. `tuning`: how that
 * ended. */
void addSelectionNotifications(std::vector<Notification>& notifications, const ChannelLists& lists,
                               size_t window, const Tuning& tuning);

/** The notification to the video plane of a window: whether it has a picture, and its size. */
Notification detectionNotification(const VideoFormat& picture, size_t window);

}  // namespace television
