/**
 * The middleware functions that the television offers, in groups. Each function here plugs the
 * functions of one group into a switchboard; its source is named after the header of
 * platform/middleware that declares them, which its comment names where the two differ. What is
 * passed by reference outlives the switchboard. The functions that are plugged may be called on any
 * thread.
 */
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "television/core/core.h"
#include "television/switchboard/switchboard.h"

namespace television {

class CamSlot;
class ChannelScan;
class InputSources;
class PersonalVideoRecorder;
class TrackSelection;
class VideoPaths;

/** Start of the client library, and the handles of the service contexts. */
void plugBringUp(switchboard::Switchboard& board);

// Channel lists: middleware/channellist.h, in the folder channel_list.

/** Making channel ids and taking them apart. */
void plugChannelIds(switchboard::Switchboard& board);
/** Single channels, the current channel, list handles, the database lock. */
void plugChannels(switchboard::Switchboard& board, Core& core);
/** Many records at once, written into memory that the client provides. */
void plugChannelBulkReads(switchboard::Switchboard& board, Core& core);
/** Counting and finding the channels that match a mask, a name or other properties. */
void plugChannelQueries(switchboard::Switchboard& board, Core& core);
/** Changing and swapping channels and multiplexes. */
void plugChannelWrites(switchboard::Switchboard& board, Core& core);
void plugChannelDeletion(switchboard::Switchboard& board, Core& core);
/** Copies of the lists to which a client can go back. */
void plugListSnapshots(switchboard::Switchboard& board, Core& core);
void plugFavourites(switchboard::Switchboard& board, Core& core);
/** The favourite list of the functions that name none. */
void plugCurrentFavourites(switchboard::Switchboard& board, Core& core);
/** The lists that installation menus show: satellites, multiplexes, networks. */
void plugInstallationLists(switchboard::Switchboard& board, Core& core);
/** Keys of services that are scrambled with BISS. */
void plugBissKeys(switchboard::Switchboard& board, Core& core);

// Watching.

/** Selecting broadcast channels, the keys that do, the channel banner. `digitTime`: how long a
 * further digit of a channel number is waited for. */
void plugBroadcast(switchboard::Switchboard& board, Core& core,
                   std::chrono::milliseconds digitTime);
/** Of broadcast.h: channel numbers that can be typed, and their limits. */
void plugBroadcastNumbers(switchboard::Switchboard& board, Core& core);
/** Of broadcast.h: the regions for which broadcasts can be meant. */
void plugBroadcastRegions(switchboard::Switchboard& board);
/** Of broadcast.h: what the tuner receives, and the CAM in the set. */
void plugBroadcastTuning(switchboard::Switchboard& board, Core& core, const CamSlot& cam);
/** Starting, observing and cancelling channel scans. */
void plugScan(switchboard::Switchboard& board, Core& core, ChannelScan& scan);
/** Service contexts (svctx.h): selecting the service in a window, and its properties. */
void plugServiceContexts(switchboard::Switchboard& board, Core& core);
/** Stream components (scc.h): the video planes of the windows and their source detection. */
void plugStreamComponents(switchboard::Switchboard& board, Core& core, const InputSources& inputs);
/** `tracks`: one selection for audio_info.h, subtitle.h and hbbtv.h. */
void plugAudioInfo(switchboard::Switchboard& board, Core& core,
                   const std::shared_ptr<TrackSelection>& tracks);
void plugSubtitles(switchboard::Switchboard& board, const std::shared_ptr<TrackSelection>& tracks);
/** The tracks as HbbTV applications select them. */
void plugHbbtv(switchboard::Switchboard& board, Core& core,
               const std::shared_ptr<TrackSelection>& tracks);
void plugVideoInfo(switchboard::Switchboard& board, Core& core);
/** The texts of the channel banner. */
void plugBanner(switchboard::Switchboard& board, Core& core);
void plugTeletext(switchboard::Switchboard& board, Core& core);
void plugClosedCaptions(switchboard::Switchboard& board, Core& core);
// Guide and time.

/** The programme guide: the three functions below, and notifications of its changes. */
void plugEvents(switchboard::Switchboard& board, Core& core);
/** Of event.h: the channels and times that an application shows of the guide. */
void plugEventWindow(switchboard::Switchboard& board, const Core& core);
/** Of event.h: finding the ids of events. */
void plugEventQueries(switchboard::Switchboard& board, const Core& core);
/** Of event.h: texts, lists and other details of single events. */
void plugEventDetails(switchboard::Switchboard& board, const Core& core);
/** Parental ratings, with the two functions below. */
void plugRatings(switchboard::Switchboard& board, Core& core);
/** Of rating.h: rating tables, and ratings of programmes as text. */
void plugRatingTables(switchboard::Switchboard& board, Core& core);
/** Plugs nothing: makes the core notify the handlers of rating.h from now on. */
void notifyRatingChanges(Core& core);
/** Date, time and sleep timer. */
void plugTime(switchboard::Switchboard& board, Core& core);

// Inputs, picture and sound.

void plugInputSources(switchboard::Switchboard& board, const Core& core, InputSources& inputs,
                      VideoPaths& paths);
/** Picture-and-picture. */
void plugMultiview(switchboard::Switchboard& board, VideoPaths& paths);
/** Screen mode, zoom and overscan. */
void plugScreenMode(switchboard::Switchboard& board, Core& core, const InputSources& inputs);
/** The message on the screen in place of a picture. */
void plugScreensaver(switchboard::Switchboard& board, const InputSources& inputs);
/** Picture modes and sound effects. */
void plugAvModes(switchboard::Switchboard& board, Core& core);
/** Volume and mute (volctrl.h). */
void plugVolumeControl(switchboard::Switchboard& board, Core& core);

// Recording.

/** Recordings, the disk, schedules. */
void plugRecorder(switchboard::Switchboard& board, Core& core, PersonalVideoRecorder& pvr);
void plugTimeShift(switchboard::Switchboard& board, PersonalVideoRecorder& pvr);
/** The media player's browser of recordings (mmp.h). */
void plugRecordingBrowser(switchboard::Switchboard& board, PersonalVideoRecorder& pvr);

// Settings and upkeep.

/** The items of docs/configuration.md. */
void plugConfiguration(switchboard::Switchboard& board, Core& core, const InputSources& inputs);
/** Values of configuration files. `baseFile`: the file for calls that name none; empty: none. */
void plugParser(switchboard::Switchboard& board, const std::string& baseFile);
/** The password dialog (pwddlg.h). */
void plugPasswordDialog(switchboard::Switchboard& board, Core& core);
/** Waking the set over the network. */
void plugNetworkWakeUp(switchboard::Switchboard& board, Core& core);
/** Power control (pcl.h). */
void plugPowerControl(switchboard::Switchboard& board, Core& core);
/** Software upgrades over the internet or from a file. */
void plugUpgrade(switchboard::Switchboard& board, Core& core);
/** Software upgrades from a broadcast (over-the-air download, oad.h). */
void plugOverTheAirDownload(switchboard::Switchboard& board, Core& core);
/** The slot for a Common Interface module (CAM) and the CI+ keys. */
void plugCommonInterface(switchboard::Switchboard& board, Core& core, CamSlot& cam);
/** Named values, versions, tuner diagnosis, freezing the picture. */
void plugUtilities(switchboard::Switchboard& board, Core& core, CamSlot& cam);

// Applications.

/** The TV application's state (apptv.h). */
void plugTvApplication(switchboard::Switchboard& board, Core& core);
/** Starting and stopping the television, and the requests that it sends to applications. */
void plugHighLevelControl(switchboard::Switchboard& board, Core& core);
/** The Ginga engine; no broadcast has applications for it. */
void plugGinga(switchboard::Switchboard& board, Core& core);
/** The MHEG-5 engine; no broadcast has applications for it. */
void plugMheg5(switchboard::Switchboard& board, Core& core);
/** Emergency alert system (eas.h). */
void plugEmergencyAlerts(switchboard::Switchboard& board);
/** Monitors of emergency warnings (ewspa.h). */
void plugEmergencyWarnings(switchboard::Switchboard& board);
/** The functions of several headers whose hardware or broadcast tables the set does not have. */
void plugAbsentFeatures(switchboard::Switchboard& board);

}  // namespace television
